#include "analysis/windows/modele_passages.h"

#include <algorithm>
#include <cmath>

#include "shell/utilitaires.h"
#include "widgets/style.h"

QString texte_delai(double secondes) {
    const long s = std::lround(std::fabs(secondes));
    const auto deux = [](long x) { return QString("%1").arg(x, 2, 10, QChar('0')); };
    if (s >= 172800) return QString("%1 j %2 h").arg(s / 86400).arg(s % 86400 / 3600);
    if (s >= 3600) return QString("%1 h %2 min").arg(s / 3600).arg(deux(s % 3600 / 60));
    if (s >= 60) return QString("%1 min %2 s").arg(s / 60).arg(deux(s % 60));
    return QString("%1 s").arg(s);
}

QString texte_degres(double x) { return QString("%1°").arg(std::lround(x)); }

QString texte_date(double j) { return QString::fromStdString(date_vers_texte(jour_vers_date(j))); }

void modele_passages::pose(std::vector<passage> passages, std::vector<station> stations) {
    beginResetModel();
    passages_ = std::move(passages);
    stations_ = std::move(stations);
    finis_ = -1;
    endResetModel();
}

void modele_passages::date(double j) {
    date_ = j;
    // The order changes where a pass comes to its end (or back from it); the words are read at each painting.
    const auto finis =
        std::count_if(passages_.begin(), passages_.end(), [j](const passage& p) { return p.fin < j; });
    if (finis != finis_)
        emit dataChanged(index(0, delai), index(rowCount() - 1, nb_colonnes - 1),
                         {Qt::DisplayRole, role_tri});
    finis_ = finis;
}

int modele_passages::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(passages_.size());
}
int modele_passages::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : nb_colonnes;
}

QVariant modele_passages::texte(const passage& p, int colonne) const {
    switch (colonne) {
    case delai:
        if (p.fin < date_) return "passé";
        return p.debut <= date_ ? QString("en vue") : texte_delai((p.debut - date_) * secondes_par_jour);
    case nom: return QString::fromStdString(stations_[p.station].nom);
    case debut: return texte_date(p.debut);
    case duree: return texte_delai(p.duree());
    case elevation: return texte_degres(p.au_max.elevation);
    default: return QString("%1 → %2").arg(texte_degres(p.a_debut.azimut), texte_degres(p.a_fin.azimut));
    }
}

double modele_passages::cle(const passage& p, int colonne) const {
    switch (colonne) {
    case delai: return p.fin < date_ ? 1e9 + p.debut : p.debut;
    case nom: return double(p.station) * 1e9 + p.debut;
    case duree: return p.duree();
    case elevation: return p.au_max.elevation;
    case azimuts: return p.a_debut.azimut;
    default: return p.debut;
    }
}

QVariant modele_passages::data(const QModelIndex& i, int role) const {
    if (!i.isValid() || i.row() >= rowCount()) return {};
    const passage& p = passages_[std::size_t(i.row())];
    switch (role) {
    case Qt::DisplayRole: return texte(p, i.column());
    case role_tri: return cle(p, i.column());
    case Qt::ForegroundRole:
        if (p.fin < date_) return style::couleur(style::role::discret);
        return p.debut <= date_ ? QVariant(style::en_texte(style::couleur(style::role::charge_utile)))
                                : QVariant();
    case Qt::TextAlignmentRole:
        return int((i.column() == nom ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return QString("%1, de %2 à %3 ; au plus haut %4 à %5 ; au plus près %6 km")
            .arg(QString::fromStdString(stations_[p.station].nom), texte_date(p.debut), texte_date(p.fin),
                 texte_degres(p.au_max.elevation), texte_date(p.date_max))
            .arg(std::lround(p.distance_min));
    default: return {};
    }
}

QVariant modele_passages::headerData(int section, Qt::Orientation o, int role) const {
    if (o != Qt::Horizontal || role != Qt::DisplayRole) return {};
    constexpr const char* titres[nb_colonnes] = {"Dans", "Station", "Élévation", "Durée", "Début", "Azimuts"};
    return QString(titres[section]);
}
