/// The flow drawing of a turn: what the generator and the battery bring on the left, where it goes on the
/// right, the width of each band to scale with its Wh.
#pragma once

#include <QWidget>

#include "analysis/bilan.h"
#include "widgets/style.h"

class flux_bilan : public QWidget {
    Q_OBJECT
public:
    explicit flux_bilan(QWidget* parent = nullptr);

    void montre(const tour_bilan& t);
    void vide();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    struct bande {
        QString nom;
        double wh;
        style::role role;
        Qt::BrushStyle motif; ///< told apart without colours too
    };
    void dessine_colonne(QPainter& p, const QList<bande>& bandes, bool entree, double echelle,
                         const QRectF& bus) const;

    tour_bilan tour_;
    bool vide_ = true;
};
