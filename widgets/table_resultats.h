/// The table of a result window: the date and columns of numbers, one row a step. It is the store of the
/// results: graph, clipboard and files are made from it, and a text only when it is shown or written.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "widgets/serie_nombres.h"

class QTableView;

/// A column as it begins: how its numbers are written, or an empty one that gets none.
struct colonne_table {
    ecriture_nombre ecriture = {};
    bool vide = false;
    QString titre = {};
};

class table_resultats : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Forgets the rows; from now on rows hold a date, from `debut` [days] every `pas` seconds, and the
    /// columns.
    void recommence(const std::vector<colonne_table>& colonnes, double debut, int32_t pas);
    /// Adds a row, a number for each column (those of empty columns count for nothing); the views see it from
    /// the next `publie` on. Throws std::bad_alloc when memory runs out: the rows so far stay.
    void ajoute(std::span<const double> valeurs, bool eclipse);
    /// Shows the rows added. Throws std::bad_alloc, with nothing changed, where that would leave less than
    /// `marge` bytes: the toolkit's own views do not live through a lack of memory.
    void publie(std::size_t marge = 16 << 20);
    using valeurs = serie_nombres;
    /// Empties a column of values (its variable has changed) and gives them back; empty when it had none.
    valeurs vide_colonne(int colonne);
    /// Puts values back that `vide_colonne` gave, as long as the rows are the same.
    void rend_colonne(int colonne, valeurs v);
    /// Memory of a row, in bytes, with what its view takes.
    static double octets_par_ligne(int colonnes);
    /// True when the column holds values.
    bool a_valeurs(int colonne) const;

    int lignes() const { return lignes_; }
    int colonnes() const { return static_cast<int>(colonnes_.size()); }
    std::string date(int ligne) const;
    /// The text of a cell, empty in an empty column.
    std::string texte(int ligne, int colonne) const;
    /// The number that the text shows; 0 for an empty one.
    double nombre(int ligne, int colonne) const;
    /// Least and greatest number of a column from row `debut` to before `fin`; zeros for an empty one.
    std::pair<double, double> extremes(int colonne, int debut, int fin) const;
    bool eclipse(int ligne) const;
    /// The rows in eclipse, neighbours together: each from the first to before the second.
    const std::vector<std::pair<int, int>>& eclipses() const { return eclipses_; }
    /// Another number after every change but added rows.
    int version() const { return version_; }
    /// A row as text, cells separated by tabs.
    std::string ligne_texte(int ligne) const;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : publiees_; }
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& i, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

private:
    struct colonne {
        serie_nombres nombres;
        bool vide;
        QString titre;
    };

    int publiees_ = 0, lignes_ = 0, version_ = 0;
    double debut_ = 0;
    int32_t pas_ = 1;
    std::vector<colonne> colonnes_;
    std::vector<double> ligne_; ///< the row in hand, rounded
    std::vector<std::pair<int, int>> eclipses_;
};

/// "dd/mm/yyyy hh:mm:ss" of the row n (from 0) of a run.
std::string date_ligne(double debut, int n, int32_t pas);

/// A table view in the manner of the result windows: read only, whole rows, number font, light to scroll.
void prepare_vue(QTableView* vue, table_resultats* table);

/// Shows what can still be shown once memory has run out.
void publie_ce_qui_tient(std::span<table_resultats* const> tables);

/// Puts rows on the clipboard under a head: those chosen in the view, or all of them.
void copie_texte(const QTableView* vue, const table_resultats& table, const QString& tete);
/// Writes the rows under a head; a failure leaves an older file as it was and is told, false.
bool enregistre_texte(QWidget* parent, const QString& chemin, const QString& tete,
                      const table_resultats& table);

/// True when a table of so many rows may be computed: a large one is told in rows and megabytes and asked
/// for, one that the memory or the view cannot hold is refused.
bool accepte_taille(QWidget* parent, double lignes, int colonnes);
/// What is said when the memory ran out all the same: the rows so far stay.
inline constexpr const char* message_memoire =
    "La mémoire est pleine : le calcul s'est arrêté. Les lignes déjà calculées restent ; prenez un pas plus "
    "grand ou une période plus courte.";
