#include "widgets/table_resultats.h"

#include <QClipboard>
#include <QColor>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QSaveFile>
#include <QTableView>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <new>

#include "shell/utilitaires.h"
#include "widgets/fichiers.h"
#include "widgets/style.h"
#include "widgets/textes.h"
#include "widgets/verifications.h"

namespace {

constexpr double lignes_sans_demander = 3e6, octets_sans_demander = 256e6;
constexpr double lignes_max = 5e7; ///< beyond, the view's heights leave their type

/// What the machine can still give [bytes]; infinite where it does not say.
double memoire_libre() {
    std::ifstream f("/proc/meminfo");
    std::string nom;
    for (double ko = 0; f >> nom;) {
        if (nom == "MemAvailable:" && f >> ko) return ko * 1024;
        f.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return std::numeric_limits<double>::infinity();
}

} // namespace

std::string date_ligne(double debut, int n, int32_t pas) {
    // The tenth of a second keeps a whole second from being cut.
    const double s = debut * secondes_par_jour + static_cast<double>(n) * pas + 0.1;
    return date_vers_texte(jour_vers_date(s / secondes_par_jour));
}

void table_resultats::recommence(const std::vector<colonne_table>& colonnes, double debut, int32_t pas) {
    beginResetModel();
    debut_ = debut;
    pas_ = pas;
    colonnes_.clear();
    for (const colonne_table& c : colonnes) colonnes_.push_back({serie_nombres(c.ecriture), c.vide, c.titre});
    ligne_.resize(colonnes_.size());
    publiees_ = lignes_ = 0;
    ++version_;
    eclipses_.clear();
    endResetModel();
}

std::string table_resultats::date(int ligne) const { return date_ligne(debut_, ligne, pas_); }

void table_resultats::ajoute(std::span<const double> valeurs, bool eclipse) {
    // All that may fail comes first: a row is added to every column or to none.
    for (colonne& c : colonnes_)
        if (!c.vide) c.nombres.prevoit();
    for (std::size_t c = 0; c < colonnes_.size(); ++c)
        if (!colonnes_[c].vide) ligne_[c] = colonnes_[c].nombres.ecriture().arrondi(valeurs[c]);
    if (eclipse) {
        if (eclipses_.empty() || eclipses_.back().second != lignes_) eclipses_.emplace_back(lignes_, lignes_);
        ++eclipses_.back().second;
    }
    for (std::size_t c = 0; c < colonnes_.size(); ++c)
        if (!colonnes_[c].vide) colonnes_[c].nombres.ajoute(ligne_[c]);
    ++lignes_;
}

void table_resultats::publie(std::size_t marge) {
    if (publiees_ == lignes()) return;
    constexpr std::size_t par_ligne = 32; // what a view keeps of a row, while it makes room for more
    // Volatile, or else the compiler leaves the allocation out.
    char* volatile place = new char[marge + par_ligne * static_cast<std::size_t>(lignes_)];
    delete[] place;
    beginInsertRows({}, publiees_, lignes() - 1);
    publiees_ = lignes();
    endInsertRows();
}

double table_resultats::octets_par_ligne(int colonnes) {
    constexpr double nombre = 4, vue = 16;
    return colonnes * nombre + vue;
}

bool table_resultats::a_valeurs(int colonne) const {
    return colonne < colonnes() && lignes() > 0 && !colonnes_[static_cast<std::size_t>(colonne)].vide;
}

table_resultats::valeurs table_resultats::vide_colonne(int numero) {
    if (!a_valeurs(numero)) return {};
    colonne& c = colonnes_[static_cast<std::size_t>(numero)];
    serie_nombres v = std::exchange(c.nombres, serie_nombres());
    c.vide = true;
    ++version_;
    if (publiees_ > 0) emit dataChanged(index(0, numero + 1), index(publiees_ - 1, numero + 1));
    return v;
}

void table_resultats::rend_colonne(int numero, valeurs v) {
    if (v.taille() != static_cast<std::size_t>(lignes()) || lignes() == 0) return;
    colonne& c = colonnes_[static_cast<std::size_t>(numero)];
    c.nombres = std::move(v);
    c.vide = false;
    ++version_;
    if (publiees_ > 0) emit dataChanged(index(0, numero + 1), index(publiees_ - 1, numero + 1));
}

std::string table_resultats::texte(int ligne, int numero) const {
    const colonne& c = colonnes_[static_cast<std::size_t>(numero)];
    return c.vide ? std::string() : c.nombres.ecriture().texte(c.nombres[static_cast<std::size_t>(ligne)]);
}

double table_resultats::nombre(int ligne, int numero) const {
    const colonne& c = colonnes_[static_cast<std::size_t>(numero)];
    return c.vide ? 0 : c.nombres[static_cast<std::size_t>(ligne)];
}

std::pair<double, double> table_resultats::extremes(int numero, int debut, int fin) const {
    const colonne& c = colonnes_[static_cast<std::size_t>(numero)];
    if (c.vide) return {0, 0};
    return c.nombres.extremes(static_cast<std::size_t>(debut), static_cast<std::size_t>(fin));
}

bool table_resultats::eclipse(int ligne) const {
    const auto apres = std::upper_bound(eclipses_.begin(), eclipses_.end(), ligne,
                                        [](int l, const std::pair<int, int>& e) { return l < e.first; });
    return apres != eclipses_.begin() && ligne < std::prev(apres)->second;
}

std::string table_resultats::ligne_texte(int ligne) const {
    std::string t = date(ligne);
    for (int c = 0; c < colonnes(); ++c) t += '\t' + texte(ligne, c);
    return t;
}

int table_resultats::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : colonnes() + 1;
}

QVariant table_resultats::data(const QModelIndex& i, int role) const {
    if (!i.isValid()) return {};
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromStdString(i.column() == 0 ? date(i.row()) : texte(i.row(), i.column() - 1));
    case Qt::BackgroundRole: return eclipse(i.row()) ? QVariant(QColor(224, 224, 224)) : QVariant();
    // The grey of an eclipse is light under a dark palette too.
    case Qt::ForegroundRole: return eclipse(i.row()) ? QVariant(QColor(Qt::black)) : QVariant();
    case Qt::TextAlignmentRole: return int(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole: return eclipse(i.row()) ? QVariant("En éclipse") : QVariant();
    default: return {};
    }
}

QVariant table_resultats::headerData(int section, Qt::Orientation o, int role) const {
    if (o != Qt::Horizontal || role != Qt::DisplayRole || section > colonnes()) return {};
    return section == 0 ? QString("Date") : colonnes_[static_cast<std::size_t>(section - 1)].titre;
}

void prepare_vue(QTableView* vue, table_resultats* table) {
    vue->setModel(table);
    vue->setFont(style::police_nombres(vue));
    vue->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vue->setSelectionBehavior(QAbstractItemView::SelectRows);
    vue->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    vue->setWordWrap(false);
    vue->verticalHeader()->hide();
    vue->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    vue->verticalHeader()->setDefaultSectionSize(vue->fontMetrics().height() + style::espace());
    vue->horizontalHeader()->setHighlightSections(false);
}

void copie_texte(const QTableView* vue, const table_resultats& table, const QString& tete) {
    const QItemSelectionModel& choix = *vue->selectionModel();
    QString texte = tete;
    for (int l = 0; l < table.lignes(); ++l)
        if (!choix.hasSelection() || choix.isRowSelected(l))
            texte += QString::fromStdString(table.ligne_texte(l) + '\n');
    QGuiApplication::clipboard()->setText(texte);
}

bool enregistre_texte(QWidget* parent, const QString& chemin, const QString& tete,
                      const table_resultats& table) {
    QSaveFile fichier(chemin);
    bool ecrit = fichier.open(QIODevice::WriteOnly);
    if (ecrit) {
        fichier.write(tete.toUtf8());
        for (int l = 0; l < table.lignes(); ++l)
            fichier.write(QByteArray::fromStdString(table.ligne_texte(l) + '\n'));
        ecrit = fichier.commit();
    }
    return ecrit || dit_echec_ecriture(parent, chemin, fichier.errorString());
}

void publie_ce_qui_tient(std::span<table_resultats* const> tables) {
    try {
        for (table_resultats* t : tables) t->publie(1 << 20);
    } catch (const std::bad_alloc&) { // the rows are there for the graph and the files
    }
}

bool accepte_taille(QWidget* parent, double lignes, int colonnes) {
    const double octets = lignes * table_resultats::octets_par_ligne(colonnes);
    if (lignes <= lignes_sans_demander && octets <= octets_sans_demander) return true;
    QString taille = QString("Le tableau compterait %1 millions de lignes, environ %2 Mo de mémoire.")
                         .arg(texte_image(lignes / 1e6, "0.0").replace('.', ','),
                              texte_image(std::ceil(octets / 1e6), "0"));
    const double libre = memoire_libre();
    if (lignes > lignes_max || octets > 0.9 * libre) {
        if (std::isfinite(libre))
            taille += " La machine en a " + texte_image(libre / 1e6, "0") + " Mo de libres.";
        message(parent, gravite::avertissement,
                taille + "\nPrenez un pas plus grand ou une période plus courte.");
        return false;
    }
    return message(parent, gravite::question, taille + "\nLe calculer ?");
}
