/// Passes computed beside the window's thread, on copies: a new request ends the one before.
#pragma once

#include <QObject>

#include "analysis/passages.h"
#include "widgets/tache.h"

class calcul_passages : public QObject {
    Q_OBJECT
public:
    explicit calcul_passages(QObject* parent = nullptr);

    void demande(const record_orbite& o, const options_modele& modele, std::vector<station> stations,
                 double debut, double fin);
    bool en_cours() const { return tache_.en_cours(); }
    const resultat_passages& resultat() const { return resultat_; }
    const std::vector<station>& stations() const { return stations_; } ///< of the result

signals:
    void pret();

private:
    resultat_passages resultat_;
    std::vector<station> stations_, demandees_;
    tache<resultat_passages> tache_;
};
