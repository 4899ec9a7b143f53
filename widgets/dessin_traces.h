/// Stacked charts over one axis of dates, drawn on any painter: each chart has an axis by unit, the curves
/// are brought down to one piece a column of pixels, so that a year costs what a day does.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QVector>

#include <memory>
#include <optional>
#include <vector>

#include "shell/serie.h"

struct trace_courbe {
    QString nom; ///< of the variable, as in the batch program
    QString titre, unite;
    int decimales = 2;
    QString calcul; ///< which run, for the legend; empty for the current one
    QColor couleur;
    Qt::PenStyle trait = Qt::SolidLine;
    double epaisseur = 1.8;
    std::shared_ptr<const serie> donnees;
};

struct trace_graphique {
    QVector<trace_courbe> courbes;
};

struct trace_evenement {
    double date; ///< [days]
    int genre;   ///< place in the list of kinds
    QString texte;
};

struct genre_trace {
    QString nom;
    QColor couleur;
    QChar signe; ///< tells it apart without colour
};

class dessin_traces {
public:
    QVector<trace_graphique> graphiques;
    QVector<QPair<double, double>> bandes; ///< [days] eclipses, sorted
    QVector<trace_evenement> evenements;   ///< by date
    QVector<genre_trace> genres;
    double debut = 0, fin = 1;  ///< [days] in sight
    double date = 0;            ///< of the cursor
    std::optional<double> a, b; ///< marks
    QString mention;            ///< in the corner below the charts, on paper too
    QFont police, police_nombres;
    bool vif = false; ///< while the view moves: curves of many points without smoothing

    /// Ordinates that a person has chosen, by chart and unit.
    struct ordonnees {
        int graphique;
        QString unite;
        double min, max;
    };
    QVector<ordonnees> choisies;

    /// Shares an area out; to be called after a change of what is shown.
    void dispose(const QSize& taille);
    /// Everything but cursor and marks. On paper the colours are those of a light desktop.
    void peint(QPainter& p, bool papier) const;
    /// Legends with the values at the cursor, cursor and marks.
    void peint_lecture(QPainter& p, bool papier, bool curseur) const;

    const QVector<QRectF>& cadres() const { return cadres_; } ///< of the curves, by chart
    QRectF bande() const { return bande_; }                   ///< strip of events
    int graphique_en(const QPointF& p) const;                 ///< -1 outside of the frames
    QString unite_en(const QPointF& p) const;                 ///< of the axis under a point; null for none
    double date_en(double x) const;
    double x_de(double date) const;
    /// The event of the strip that stands nearest to a point, within a hand's reach; null for none.
    const trace_evenement* evenement_en(const QPointF& p) const;

    QStringList unites(int graphique) const;
    QPair<double, double> etendue(int graphique, const QString& unite) const;

private:
    struct encres {
        QColor fond, texte, axe, grille, bande;
        bool papier;
    };
    encres encre(bool papier) const;
    void peint_cadre(QPainter& p, int g, const encres& e) const;
    void peint_axes(QPainter& p, int g, const encres& e) const;
    void peint_dates(QPainter& p, const encres& e) const;
    void peint_evenements(QPainter& p, const encres& e) const;
    void peint_courbe(QPainter& p, int g, const trace_courbe& c, const encres& e) const;
    void peint_dense(QPainter& p, const QRectF& r, const trace_courbe& c, double bas, double echelle,
                     const QColor& couleur) const;
    void peint_legende(QPainter& p, int g, const encres& e, bool curseur) const;
    void peint_marques(QPainter& p, const encres& e, bool curseur) const;
    QString valeur_entree(const trace_courbe& c, bool curseur) const;
    double largeur_entree(const trace_graphique& g, int k) const;
    double hauteur_ligne() const;
    int graduations_y(const QRectF& r) const; ///< how many an axis has room for

    QSize taille_;
    QVector<QRectF> cadres_, legendes_;
    QRectF bande_;
    double largeur_axe_ = 0;
};
