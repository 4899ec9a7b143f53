/// The chart's own pieces of the plotting library: an axis of dates, and a curve that draws what is in sight.
#pragma once

#include <qcustomplot.h>

/// Ticks on round hours and days; the date stands under the first tick and at each change of day.
class abscisses_en_dates : public QCPAxisTicker {
protected:
    double getTickStep(const QCPRange& r) override;
    int getSubTickCount(double) override { return 0; }
    QVector<QString> createLabelVector(const QVector<double>& t, const QLocale&, QChar, int) override;
};

/// A curve that draws only what can be seen: the painter lays dashes along the whole of a line, however far
/// beyond the axes its values lead it.
class courbe_bornee : public QCPGraph {
public:
    using QCPGraph::QCPGraph;

protected:
    void drawLinePlot(QCPPainter* p, const QVector<QPointF>& lignes) const override;
};
