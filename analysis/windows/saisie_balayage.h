/// What a sweep varies and measures, as a user enters it: a line for each varied field with its limits and
/// unit, the measures to keep, the draws.
#pragma once

#include <QWidget>

#include <vector>

#include "analysis/balayage.h"
#include "shell/session.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;
class QVBoxLayout;

class saisie_balayage : public QWidget {
    Q_OBJECT
public:
    explicit saisie_balayage(const session& s, QWidget* parent = nullptr);

    /// The plan for the session as it stands; false with the reason, whose box gets the focus.
    bool plan(plan_balayage& p, QString& raison) const;
    int coeurs() const;

signals:
    void change();

private:
    struct ligne {
        QWidget* cadre;
        QComboBox *champ, *genre;
        QLineEdit* valeurs;
        QLabel* limites;
    };
    void ajoute(const QString& champ, const QString& valeurs);
    void retire(QWidget* cadre);
    void montre_limites(const ligne& l) const;

    const session& s_;
    std::vector<ligne> lignes_;
    QVBoxLayout* pile_;
    QListWidget* lst_mesures_;
    QSpinBox *spn_tirages_, *spn_graine_, *spn_coeurs_;
};
