/// The foot of a window that computes a table: progress, then the buttons that stop, run, save and quit.
#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// The button that starts a run and the one that stops it: the one that makes sense is enabled. The focus
/// stays on the first, stopped or not.
struct depart_arret {
    QPushButton *lance = nullptr, *arrete = nullptr;
    bool rend_focus = false; ///< the button that starts had the focus when it was disabled

    void etat(bool en_cours);
};

class pied_calcul : public QWidget {
    Q_OBJECT
public:
    pied_calcul(const QString& aide_calcul, const QString& aide_enregistrement, QWidget* parent = nullptr);

    /// Puts a control before "Quitter".
    void ajoute(QWidget* w);
    /// While a calculation runs it can be stopped, and no other one begins.
    void etat(bool en_cours);
    /// Shows a progress from 0 to 1; more counts as 1.
    void avance(double fraction);

signals:
    void calculer();
    void interrompre();
    void enregistrer();
    void quitter();

private:
    QProgressBar* statusbar_;
    QLabel* lab_status_;
    QPushButton *cmd_stopcalcul_, *cmd_saisir_, *cmd_save_;
    depart_arret boutons_;
};
