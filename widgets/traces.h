/// Stacked charts under the hand: wheel zoom about the pointer, drag, back, cursor, marks, events, drops.
///
/// Wheel: dates; with Ctrl, or over an axis, its ordinates. Drag: move; with Shift: an interval to zoom on.
/// Double click: everything again. A and B place the marks at the cursor, which the arrows move too; Page
/// Up and Page Down go to the event before or after it.
#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>

#include "widgets/dessin_traces.h"

class traces : public QWidget {
    Q_OBJECT
public:
    /// Of what is dragged onto a chart: the name of a variable as text.
    static constexpr const char* format_variable = "application/x-kestrel-variable";

    explicit traces(QWidget* parent = nullptr);

    /// Other curves, bands or events, in the same view where it still shows something.
    void montre(QVector<trace_graphique> graphiques);
    void pose_mention(const QString& mention);
    void pose_bandes(QVector<QPair<double, double>> bandes);
    void pose_evenements(QVector<genre_trace> genres, QVector<trace_evenement> evenements);
    /// The whole interval of dates; the view goes along while nobody has chosen another.
    void etendue(double debut, double fin);
    void pose_curseur(double j);
    void pose_marques(std::optional<double> a, std::optional<double> b);
    void pose_vue(double debut, double fin); ///< kept for `retour`
    void montre_tout();
    void retour();
    bool a_retour() const { return !histoire_.isEmpty(); }
    /// Fits the ordinates of all charts to what is in sight, or to all again.
    void ajuste_ordonnees(bool a_la_vue);
    void va_evenement(int sens); ///< -1 the one before the cursor, 1 the one after

    const dessin_traces& dessin() const { return d_; }
    double curseur() const { return d_.date; }
    /// A chart or the whole picture on white, as it is in sight.
    void peint_papier(QPainter& p, const QSize& taille) const;

signals:
    void curseur_change(double j);
    void date_choisie(double j); ///< by a click, an arrow, an event
    void marques_changees();
    void vue_changee();
    void depose(const QString& variable, int graphique); ///< -1: below the charts
    void menu_demande(const QPoint& global, int graphique);

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void changeEvent(QEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dragMoveEvent(QDragMoveEvent* e) override;
    void dropEvent(QDropEvent* e) override;
    bool event(QEvent* e) override; ///< tool tips of events

private:
    enum class geste { aucun, deplace, zoom, marque_a, marque_b };

    void change();
    void va(double debut, double fin);
    void retient();
    void zoome_ordonnees(int g, const QString& unite, double y, double facteur);
    void choisit(double j);
    bool pres_de(const std::optional<double>& marque, double x) const;

    dessin_traces d_;
    double tout_debut_ = 0, tout_fin_ = 1;
    QVector<QPair<double, double>> histoire_;
    QElapsedTimer depuis_molette_;
    geste geste_ = geste::aucun;
    QPointF appui_;
    double vue_debut_ = 0, vue_fin_ = 1; ///< when the button went down
    bool bouge_ = false;
    double zoom_x_ = 0;
    QImage image_;
    bool a_peindre_ = true;
    QTimer repos_; ///< the view has stopped moving: smooth again
};
