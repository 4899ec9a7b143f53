/// The program's chart: a small wrapper with one style for all windows. Zoom by wheel, pan by drag, values
/// under the cursor, legend, picture to clipboard or file by the context menu.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <limits>

class QCustomPlot;
class QCPAxis;
class QCPRange;
class QCPItemLine;
class QCPItemRect;
class QCPTextElement;

class graphe : public QWidget {
    Q_OBJECT
public:
    explicit graphe(QWidget* parent = nullptr);

    void titre(const QString& texte);
    void axes(const QString& x, const QString& y);
    /// A second ordinate on the right.
    void axe_droit(const QString& texte);
    /// Abscissae are dates (days since 1950), shown as hours and, at day changes, dates.
    void abscisses_dates();
    /// Named abscissae at 0, 1, 2 ...
    void abscisses_nommees(const QStringList& noms);
    /// Fixed limits; without them the axes follow the data.
    void limites_x(double min, double max);
    void limites_y(double min, double max, bool droit = false);
    /// The ordinates follow the data from this abscissa on; those before it may leave the axes.
    void echelle_depuis(double x) { echelle_depuis_ = x; }
    /// Two charts, one above the other, whose axes begin and end together.
    static void aligne(graphe* a, graphe* b);

    /// Adds a curve and returns its number.
    int courbe(const QString& nom, const QColor& couleur, Qt::PenStyle trait = Qt::SolidLine,
               bool droit = false, double epaisseur = 1.6);
    /// x sorted; a value that is not finite is a gap.
    void donnees(int courbe, const QVector<double>& x, const QVector<double>& y);
    void ajoute_point(int courbe, double x, double y);
    /// The curve shows an angle in degrees: what jumps by more than half a turn is not joined.
    void angulaire(int courbe);
    /// Keeps only the points from x on (a strip that moves on).
    void oublie_avant(int courbe, double x);
    int nombre_points(int courbe) const;
    /// Grey bands behind the curves (eclipses), as pairs of abscissae.
    void bandes(const QVector<QPair<double, double>>& intervalles);
    /// Below the axes, in rows of so many entries.
    void legende(bool visible, int colonnes = 5);

    /// The view goes back to its limits at the next drawing, wherever the user has moved it.
    void suit() { vue_choisie_ = false; }
    /// Forgets curves and bands.
    void efface();
    /// Fits the axes that have no fixed limits to the data, and redraws (queued).
    void retrace();
    /// Saves as PNG or PDF by the file's ending; false when it cannot be written.
    bool enregistre(const QString& chemin);

    /// Charts that stand below each other get the same margin at their left, so that their abscissae line up.
    static void aligne(const QVector<graphe*>& pile);

    QSize sizeHint() const override;
    QCustomPlot* dessin() const { return dessin_; } ///< for tests

signals:
    /// A click, not a drag, at an abscissa and an ordinate of the left axis.
    void clique(double x, double y);

protected:
    void changeEvent(QEvent* e) override; ///< follows the palette
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    struct bornes {
        double min = 0.0, max = 1.0;
        bool fixe = false;
    };

    void applique_palette(bool fonce);
    void regle_graduations();
    void ajuste(); ///< all axes to their limits or to the data
    /// The limits of an axis, or what its data fill with a margin.
    QCPRange etendue(const QCPAxis* axe) const;
    void borne_vue(QCPAxis* axe, const QCPRange& nouvelle, const QCPRange& ancienne);
    void montre_valeurs(const QPoint& position);
    void menu_contextuel(const QPoint& position);
    void copie_image();
    void demande_fichier(const QString& suffixe);
    QString texte_abscisse(double x) const;

    QCustomPlot* dessin_;
    QCPTextElement* titre_ = nullptr;
    QCPItemLine* repere_;
    QVector<QCPItemRect*> bandes_;
    QStringList noms_x_;
    bornes x_, y_, droit_;
    double echelle_depuis_ = -std::numeric_limits<double>::infinity();
    bool dates_ = false;
    QVector<int> angulaires_;
    QPoint appui_;             ///< where the mouse went down
    bool bornage_ = false;     ///< a view is being brought back
    bool vue_choisie_ = false; ///< the user has zoomed or moved: new data leave the view alone
};
