#include "analysis/variables.h"
#include "batch/commandes.h"

statut cmd_variables(const options&, session&, csv& sortie) {
    sortie.entete({"nom", "titre", "unite", "elements", "sens"});
    for (const variable& v : catalogue()) {
        sortie.mot(v.nom);
        sortie.mot(v.titre);
        sortie.mot(v.unite);
        sortie.valeur(v.elements);
        sortie.mot(v.sens);
        sortie.fin_de_ligne();
    }
    return reussi;
}
