/// The result picture: curves of a result table over a period, with eclipse bands, on fixed coordinates.
///
/// The drawing area goes from x = 50 to 750 and from y = 5 (top) to 235 of a picture of 800 x 280, which is
/// what is saved, on white. On the screen that area is stretched to the room there is, in the palette's
/// colours. Each curve bears its number at its end, and the margin below names them.
#pragma once

#include <QColor>
#include <QPixmap>
#include <QPolygonF>
#include <QTransform>
#include <QVector>
#include <QWidget>

#include <array>
#include <vector>

class QLabel;
class QPainter;
class table_resultats;

/// Colour of the curve of a column, 0 to 5 (then again from 0), on white or on a dark ground.
QColor couleur_colonne(int colonne, bool fonce = false);
/// The number of a curve in a filled square of its colour, centred on a point.
void dessine_numero(QPainter& p, const QPointF& centre, int numero, const QColor& couleur, double cote);

class trace_graph : public QWidget {
    Q_OBJECT
public:
    static constexpr int largeur = 800, hauteur = 280;
    static constexpr int nombre_x = 11, nombre_y = 5;

    /// A column of the table that is drawn.
    struct courbe {
        int colonne = 0;
        QColor couleur, couleur_sombre; ///< on white, and on a dark ground
        QString nom, position, unite;   ///< for the legend and the values under the cursor
        int numero = 1;                 ///< at the curve's end and in the legend
        Qt::PenStyle trait = Qt::SolidLine;
    };

    explicit trace_graph(QWidget* parent = nullptr);

    /// Clears the picture.
    void efface();
    /// Draws the curves of a table that runs from `debut` to `fin` [days]. Limits in the wrong order are
    /// swapped; equal ones leave the picture empty. The table outlives the picture.
    void trace(const table_resultats& table, const QVector<courbe>& courbes, double debut, double fin,
               double min, double max);

    /// The picture on its own coordinates.
    QImage image() const;
    /// Saves the picture (BMP, or PNG by the file's ending); false when it cannot be written.
    bool enregistre(const QString& chemin) const;
    /// Date and values of the row that is drawn nearest to a point of the widget; empty outside of the
    /// curves.
    QString valeurs_sous(const QPoint& point) const;

    QSize sizeHint() const override { return {largeur, hauteur}; }
    QSize minimumSizeHint() const override { return {largeur / 2, hauteur / 2}; }

protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void changeEvent(QEvent* e) override; ///< follows the palette

private:
    /// Where and with what the picture is drawn.
    struct feuille {
        QTransform place; ///< from the picture's coordinates
        QSizeF taille;
        QFont police;
        QColor papier, encre, filet, eclipse;
        bool fonce = false;
        bool image = false; ///< the saved picture, on its own coordinates
    };
    feuille feuille_image() const;
    feuille feuille_ecran() const;
    void dessine(QPainter& p, const feuille& f) const;
    void dessine_axes(QPainter& p, const feuille& f) const;
    void dessine_courbes(QPainter& p, const feuille& f) const;
    void dessine_numeros(QPainter& p, const feuille& f) const;
    void dessine_legende(QPainter& p, const feuille& f) const;
    QColor couleur(int courbe, const feuille& f) const;
    int rangees(const feuille& f) const;
    QRectF zone_legende(const feuille& f) const;
    QRectF cadre_x(int i, const feuille& f) const;
    QRectF cadre_y(int i, const feuille& f) const;
    struct tranche {
        int x, debut, fin; ///< rows from `debut`, counted from 0, to before `fin`
    };
    std::vector<tranche> tranches() const;
    void releve_bandes();
    void releve_courbes();
    void dessine_etiquettes(QPainter& p, const feuille& f) const;
    void ecrit_etiquettes(double debut, double fin);
    void place_etiquettes();
    /// Abscissa of the row r, the rows counted from 1.
    int abscisse(int r) const;
    int ligne_sous(const QPoint& point) const;

    std::array<QLabel*, nombre_x> lab_x_;
    std::array<QLabel*, nombre_y> lab_y_;
    bool trace_ = false;
    int segments_ = 0; ///< between the rows, at least 1 when there is something to draw
    double min_ = 0, max_ = 0;
    QVector<courbe> courbes_;
    std::vector<QPolygonF> lignes_;          ///< per curve, on the picture's coordinates
    std::vector<double> derniers_;           ///< last number of each curve
    QVector<QRect> bandes_;                  ///< of eclipse
    const table_resultats* table_ = nullptr; ///< for the values under the cursor
    int version_ = 0;                        ///< of the table that is drawn
    QPixmap cache_;
    int curseur_ = -1; ///< row under the cursor
};
