#include "shell/etude_historique.h"

#include "project/etude_compare.h"

etude_historique::etude_historique(session& s) : s_(s) {
    instants_.push_back({"", s, std::make_shared<fichiers>(fichiers_de_session())});
}

etude_historique::fichiers etude_historique::fichiers_de_session() const { return {s_, s_.gardee}; }

void etude_historique::ajoute(const std::string& libelle, std::shared_ptr<fichiers> f) {
    instants_.resize(courant_ + 1);
    instants_.push_back({libelle, s_, std::move(f)});
    if (instants_.size() > profondeur + 1) instants_.pop_front();
    courant_ = instants_.size() - 1;
}

bool etude_historique::note(const std::string& libelle) {
    const instant& dernier = instants_[courant_];
    *dernier.f = fichiers_de_session();
    if (meme_etude(dernier.e, s_)) return false;
    ajoute(libelle.empty() ? libelle_etape(dernier.e, s_) : libelle, dernier.f);
    return true;
}

bool etude_historique::note_ouverture(const std::string& libelle) {
    const instant& dernier = instants_[courant_];
    auto f = std::make_shared<fichiers>(fichiers_de_session());
    if (meme_etude(dernier.e, s_)) {
        *dernier.f = *f;
        return false;
    }
    ajoute(libelle, std::move(f));
    return true;
}

std::string etude_historique::libelle_annuler() const { return instants_[courant_].libelle; }

std::string etude_historique::libelle_refaire() const {
    return courant_ + 1 < instants_.size() ? instants_[courant_ + 1].libelle : std::string();
}

bool etude_historique::annule() {
    note();
    if (courant_ == 0) return false;
    --courant_;
    applique();
    return true;
}

bool etude_historique::refait() {
    if (note() || courant_ + 1 >= instants_.size()) return false;
    ++courant_;
    applique();
    return true;
}

void etude_historique::adopte() { instants_[courant_].e = s_; }

void etude_historique::applique() {
    const instant& i = instants_[courant_];
    copie_reglages(i.e, s_);
    static_cast<provenance&>(s_) = i.f->d_ou;
    s_.gardee = i.f->gardee;
}
