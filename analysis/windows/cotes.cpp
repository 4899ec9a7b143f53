#include "analysis/windows/cotes.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainterPath>

#include <cmath>

namespace {

/// A segment that is the map's own edge, and no coast.
bool coupure(const QPointF& a, const QPointF& b) {
    return (std::fabs(a.x()) == 180 && a.x() == b.x()) || (a.y() == 90 && b.y() == 90);
}

void ajoute_anneau(const QJsonArray& anneau, QPainterPath& terres, QPainterPath& cotes) {
    QPolygonF points;
    for (const QJsonValue v : anneau) {
        const QJsonArray p = v.toArray();
        points << QPointF(p.at(0).toDouble(), -p.at(1).toDouble());
    }
    terres.addPolygon(points);
    bool leve = true;
    for (int i = 1; i < points.size(); ++i) {
        if (coupure(points[i - 1], points[i])) {
            leve = true;
            continue;
        }
        if (leve) cotes.moveTo(points[i - 1]);
        cotes.lineTo(points[i]);
        leve = false;
    }
}

} // namespace

void lit_cotes(QPainterPath& terres, QPainterPath& cotes) {
    QFile f(":/land110m.geojson");
    if (!f.open(QIODevice::ReadOnly)) return;
    terres.setFillRule(Qt::OddEvenFill);
    const QJsonArray objets = QJsonDocument::fromJson(f.readAll()).object().value("features").toArray();
    for (const QJsonValue o : objets) {
        const QJsonObject forme = o.toObject().value("geometry").toObject();
        QJsonArray polygones = forme.value("coordinates").toArray();
        if (forme.value("type").toString() == "Polygon") polygones = QJsonArray{polygones};
        for (const QJsonValue p : polygones)
            for (const QJsonValue anneau : p.toArray()) ajoute_anneau(anneau.toArray(), terres, cotes);
    }
}
