/// A measure of a sweep over two fields as a coloured map with its scale; a click chooses a variant.
#pragma once

#include <QWidget>

#include <vector>

class carte_balayage : public QWidget {
    Q_OBJECT
public:
    explicit carte_balayage(QWidget* parent = nullptr);

    /// `z` row by row, the second field varying fastest; not a number where nothing is known.
    void montre(const QString& nom_x, std::vector<double> x, const QString& nom_y, std::vector<double> y,
                const QString& nom_z, std::vector<double> z);

    QSize minimumSizeHint() const override;

signals:
    void clique(long variante);

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    QRectF cadre() const;
    long variante_sous(const QPointF& p) const;

    QString nom_x_, nom_y_, nom_z_;
    std::vector<double> x_, y_, z_;
    double min_ = 0, max_ = 1;
};
