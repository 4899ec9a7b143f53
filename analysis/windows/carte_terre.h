/// The map of the Earth: coastlines, night, the satellite's track, stations with their circles. Plate carrée;
/// the wheel zooms about the pointer, dragging moves, a double click shows it all.
#pragma once

#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

#include <optional>
#include <vector>

#include "analysis/carte.h"

/// A station as the map shows it.
struct station_carte {
    QString nom;
    point_sol place;
    std::vector<point_sol> cercle; ///< empty: never in view
    bool en_vue = false;           ///< the satellite stands above its mask now
    bool choisie = false;
};

/// What the map shows at a date.
struct contenu_carte {
    std::vector<point_trace> trace; ///< in the order of time
    std::size_t present = 0;        ///< place of the date in the track
    std::optional<place_satellite> satellite;
    point_sol soleil;
    std::vector<station_carte> stations;
};

class carte_terre : public QWidget {
    Q_OBJECT
public:
    explicit carte_terre(QWidget* parent = nullptr);

    void montre(contenu_carte c);
    const contenu_carte& contenu() const { return contenu_; }

    /// Pixel of a point of the ground, and back (no value outside of the Earth).
    QPointF pixel(const point_sol& p) const;
    std::optional<point_sol> sol(const QPointF& pixel) const;
    double zoom() const { return zoom_; }
    void montre_tout();
    /// Zooms by a factor about a pixel.
    void agrandit(double facteur, const QPointF& autour);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The pointer stands over a point of the ground, or has left the Earth.
    void pointe(double lon, double lat);
    void quitte();
    void station_choisie(int indice);
    /// A station is asked for at a place (context menu).
    void demande_station(double lon, double lat);

protected:
    void paintEvent(QPaintEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void leaveEvent(QEvent* e) override;

private:
    double echelle() const; ///< pixels a degree
    QRectF cadre() const;   ///< what the Earth fills
    void deplace(const QPointF& pixels);
    void borne_centre();
    /// Calls `f` with each turn of longitudes (-360, 0, 360 ...) that the interval shows in sight.
    template <class F>
    void par_tour(double lon_min, double lon_max, F f) const;
    QPolygonF polygone(const std::vector<point_sol>& bord) const;
    void remplit(QPainter& p, const std::vector<point_sol>& bord) const;
    QPixmap dessine_fond() const;
    void dessine_nuit(QPainter& p) const;
    void dessine_stations(QPainter& p) const;
    void dessine_trace(QPainter& p) const;
    void dessine_satellite(QPainter& p) const;
    void dessine_soleil(QPainter& p) const;

    contenu_carte contenu_;
    QPainterPath terres_, cotes_; ///< in degrees, latitude downwards
    double zoom_ = 1;
    point_sol centre_;
    QPointF souris_;
    bool glisse_ = false, bouge_ = false;
    mutable QPixmap fond_; ///< sea, land and grid of the view below
    mutable QString cle_fond_;
};
