/// The settings of the attitude bench: model, length and step, start, what acts, control. All of them are the
/// étude's own.
#pragma once

#include <QWidget>

#include <functional>
#include <utility>

#include "shell/session.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class boite_champ;

class reglages_banc : public QWidget {
    Q_OBJECT
public:
    explicit reglages_banc(session& s, QWidget* parent = nullptr);

    /// Shows the étude as it stands.
    void relit();

signals:
    void change(const QString& libelle);
    void demande_fenetre(const QString& nom, int onglet);

private:
    QGroupBox* cree_essai();
    QGroupBox* cree_depart();
    QGroupBox* cree_parties();
    QGroupBox* cree_controle();
    boite_champ* boite(const QString& nom, const QString& champ, int caracteres = 7);
    QComboBox* liste(const char* nom, const QString& titre, const QStringList& choix,
                     std::function<int()> lit, std::function<void(int)> ecrit);
    void montre_loi();

    session& s_;
    QList<boite_champ*> boites_;
    QList<QCheckBox*> parties_;
    QList<std::pair<QComboBox*, std::function<int()>>> listes_;
    QList<QWidget*> de_b_dot_, de_pd_, de_face_, angles_;
    QLabel *lab_modele_, *lab_pointage_, *lab_controle_;
};
