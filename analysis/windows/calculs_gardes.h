/// Kept runs: each with its étude, a colour and a dash; which of them are shown, and the settings in which
/// they differ from the étude in force.
#pragma once

#include <QColor>
#include <QWidget>

#include <memory>
#include <vector>

#include "analysis/calcul_courbes.h"

class QListWidget;
class QPushButton;
class QTableWidget;

struct calcul_garde {
    int numero;     ///< of its own, whatever comes and goes before it
    QString nom;    ///< given by the user; empty: told by the settings that differ
    QString projet; ///< of the étude
    etude reglages;
    std::shared_ptr<const resultat_courbes> resultat;
    QColor couleur;
    Qt::PenStyle trait = Qt::DashLine;
    bool montre = true;
    QString libelle = {}; ///< what legends call it
};

class calculs_gardes : public QWidget {
    Q_OBJECT
public:
    explicit calculs_gardes(QWidget* parent = nullptr);

    void garde(const etude& e, std::shared_ptr<const resultat_courbes> r, const QString& projet);
    /// The étude in force: labels and differences go by it.
    void suit(const etude& courante);
    /// Null when it has been deleted.
    const calcul_garde* cherche(int numero) const;
    const std::vector<calcul_garde>& calculs() const { return gardes_; }
    /// Other results of a kept run (another variable has been asked for).
    void remplace(int numero, std::shared_ptr<const resultat_courbes> r);

signals:
    void change();                 ///< which are shown, how they look, what they are called
    void demande_calcul(int k);    ///< run it again
    void demande_ouverture(int k); ///< make its étude the one in force

private:
    void remplit();
    void remplit_differences();
    void choix_change();
    void apparence();
    int choisi() const;

    std::vector<calcul_garde> gardes_;
    etude courante_;
    int suivant_ = 0; ///< colour and dash of the next one
    bool remplit_ = false;
    QListWidget* liste_;
    QTableWidget* differences_;
    QPushButton *cmd_apparence_, *cmd_recalcule_, *cmd_rouvre_, *cmd_supprime_;
};
