/// A row of widgets that goes on in a further row where the width is short.
#pragma once

#include <QLayout>
#include <QList>

class disposition_flux : public QLayout {
public:
    explicit disposition_flux(QWidget* parent = nullptr) : QLayout(parent) {}
    ~disposition_flux() override;

    void addItem(QLayoutItem* i) override { pieces_ << i; }
    int count() const override { return int(pieces_.size()); }
    QLayoutItem* itemAt(int i) const override { return pieces_.value(i); }
    QLayoutItem* takeAt(int i) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int largeur) const override { return place({0, 0, largeur, 0}, false); }
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& r) override;

private:
    /// Lays the pieces out in `r` (or only measures); returns the height used.
    int place(const QRect& r, bool applique) const;

    QList<QLayoutItem*> pieces_;
};
