/// A date on a slider that can be played: what shows a moment of a period is moved by it.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QComboBox;
class QLabel;
class QSlider;
class QToolButton;

class barre_temps : public QWidget {
    Q_OBJECT
public:
    explicit barre_temps(QWidget* parent = nullptr);

    /// The interval of the slider [days]; the date stays where it is, or moves to the nearer end.
    void etendue(double debut, double fin);
    double debut() const { return debut_; }
    double fin() const { return fin_; }
    double date() const { return date_; }
    /// Shows a date without telling it; outside of the interval the slider stands at its end.
    void pose(double j);

    bool joue() const { return minuterie_.isActive(); }
    void lance();
    void arrete();

signals:
    /// The user, or the play, has moved the date.
    void date_changee(double j);

protected:
    void hideEvent(QHideEvent* e) override;

private:
    void avance();
    void montre();
    double vitesse() const;

    double debut_ = 0, fin_ = 1, date_ = 0;
    QSlider* curseur_;
    QToolButton* bouton_;
    QComboBox* vitesses_;
    QLabel* texte_;
    QTimer minuterie_;
    QElapsedTimer depuis_;
};
