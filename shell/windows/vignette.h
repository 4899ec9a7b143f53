/// A drawing that is a button: a title, the picture, a line below it. A click, Enter or Space goes to what
/// edits it.
#pragma once

#include <QAbstractButton>

class QLabel;

class vignette : public QAbstractButton {
    Q_OBJECT
public:
    /// `bulle` says where a click leads; with the title it is what a screen reader tells.
    vignette(const QString& nom, const QString& titre, QWidget* dessin, const QString& bulle);

    void legende(const QString& texte);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    bool event(QEvent* e) override;

private:
    QLabel* legende_;
};
