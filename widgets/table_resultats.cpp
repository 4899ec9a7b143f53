#include "widgets/table_resultats.h"

#include <QClipboard>
#include <QColor>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QSaveFile>
#include <QTableView>

#include <charconv>

#include <cmath>
#include <fstream>
#include <limits>

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

void table_resultats::recommence(int colonnes, double debut, int32_t pas, const QStringList& titres) {
    beginResetModel();
    debut_ = debut;
    pas_ = pas;
    colonnes_ = colonnes;
    titres_ = titres;
    publiees_ = 0;
    textes_.clear();
    eclipses_.clear();
    endResetModel();
}

double nombre_de(const std::string& texte) {
    double x = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), x);
    return x;
}

std::string table_resultats::date(int ligne) const { return date_ligne(debut_, ligne, pas_); }

void table_resultats::ajoute(const std::vector<std::string>& valeurs, bool eclipse) {
    textes_.insert(textes_.end(), valeurs.begin(), valeurs.begin() + colonnes_);
    eclipses_.push_back(eclipse);
}

void table_resultats::publie() {
    if (publiees_ == lignes()) return;
    beginInsertRows({}, publiees_, lignes() - 1);
    publiees_ = lignes();
    endInsertRows();
}

double table_resultats::octets_par_ligne(int colonnes) {
    constexpr double vue = 8, graphe = sizeof(double);
    return colonnes * (sizeof(std::string) + graphe) + vue;
}

bool table_resultats::a_valeurs(int colonne) const {
    return colonne < colonnes_ && lignes() > 0 && !texte(0, colonne).empty();
}

table_resultats::valeurs table_resultats::vide_colonne(int colonne) {
    if (!a_valeurs(colonne)) return {};
    valeurs v(static_cast<size_t>(lignes()));
    for (int l = 0; l < lignes(); ++l) v[static_cast<size_t>(l)].swap(textes_[place(l, colonne)]);
    if (publiees_ > 0) emit dataChanged(index(0, colonne + 1), index(publiees_ - 1, colonne + 1));
    return v;
}

void table_resultats::rend_colonne(int colonne, const valeurs& v) {
    if (v.size() != static_cast<size_t>(lignes()) || v.empty()) return;
    for (int l = 0; l < lignes(); ++l) textes_[place(l, colonne)] = v[static_cast<size_t>(l)];
    if (publiees_ > 0) emit dataChanged(index(0, colonne + 1), index(publiees_ - 1, colonne + 1));
}

double table_resultats::nombre(int ligne, int colonne) const { return nombre_de(texte(ligne, colonne)); }

std::string table_resultats::ligne_texte(int ligne) const {
    std::string t = date(ligne);
    for (int c = 0; c < colonnes_; ++c) t += '\t' + texte(ligne, c);
    return t;
}

int table_resultats::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : colonnes_ + 1;
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
    if (o != Qt::Horizontal || role != Qt::DisplayRole || section > titres_.size()) return {};
    return section == 0 ? QString("Date") : titres_[section - 1];
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

bool accepte_taille(QWidget* parent, double lignes, int colonnes) {
    const double octets = lignes * table_resultats::octets_par_ligne(colonnes);
    if (lignes <= lignes_sans_demander && octets <= octets_sans_demander) return true;
    QString taille = QString("Le tableau compterait %1 millions de lignes, environ %2 Mo de mémoire.")
                         .arg(texte_image(lignes / 1e6, "0.0"), texte_image(std::ceil(octets / 1e6), "0"));
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
