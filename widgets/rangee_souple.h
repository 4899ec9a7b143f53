/// Widgets side by side where the width allows, below each other where it does not: pages stay usable on a
/// small screen without a bar that scrolls sideways.
#pragma once

#include <QWidget>

class QBoxLayout;

class rangee_souple : public QWidget {
    Q_OBJECT
public:
    explicit rangee_souple(QWidget* parent = nullptr);

    void ajoute(QWidget* w, int part = 0);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* e) override;
    bool event(QEvent* e) override;

private:
    void range();

    QBoxLayout* pile_;
};
