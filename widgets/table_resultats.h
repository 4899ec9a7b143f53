/// The table of a result window: the date and columns of value texts, one row a step. It is the store of the
/// results: graph, clipboard and files are made from its texts.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <string>
#include <vector>

class QTableView;

class table_resultats : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Forgets the rows; from now on rows hold a date, from `debut` [days] every `pas` seconds, and
    /// `colonnes` values.
    void recommence(int colonnes, double debut, int32_t pas, const QStringList& titres = {});
    /// Adds a row; the views see it from the next `publie` on.
    void ajoute(const std::vector<std::string>& valeurs, bool eclipse);
    void publie();
    using valeurs = std::vector<std::string>;
    /// Empties a column of values (its variable has changed) and gives them back; empty when it had none.
    valeurs vide_colonne(int colonne);
    /// Puts values back that `vide_colonne` gave, as long as the rows are the same.
    void rend_colonne(int colonne, const valeurs& v);
    /// Memory of a row, in bytes, with what its view and its graph take.
    static double octets_par_ligne(int colonnes);
    /// True when the column holds values.
    bool a_valeurs(int colonne) const;

    int lignes() const { return static_cast<int>(eclipses_.size()); }
    int colonnes() const { return colonnes_; }
    std::string date(int ligne) const;
    const std::string& texte(int ligne, int colonne) const { return textes_[place(ligne, colonne)]; }
    /// The text of a cell as a number; 0 for an empty one.
    double nombre(int ligne, int colonne) const;
    bool eclipse(int ligne) const { return eclipses_[static_cast<std::size_t>(ligne)]; }
    /// A row as text, cells separated by tabs.
    std::string ligne_texte(int ligne) const;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : publiees_; }
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& i, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

private:
    std::size_t place(int ligne, int colonne) const {
        return static_cast<std::size_t>(ligne) * static_cast<std::size_t>(colonnes_) +
               static_cast<std::size_t>(colonne);
    }

    int colonnes_ = 0, publiees_ = 0;
    double debut_ = 0;
    int32_t pas_ = 1;
    QStringList titres_;
    std::vector<std::string> textes_; ///< row by row
    std::vector<bool> eclipses_;
};

/// A value text back as a number; 0 for an empty one.
double nombre_de(const std::string& texte);
/// "dd/mm/yyyy hh:mm:ss" of the row n (from 0) of a run.
std::string date_ligne(double debut, int n, int32_t pas);

/// A table view in the manner of the result windows: read only, whole rows, number font, light to scroll.
void prepare_vue(QTableView* vue, table_resultats* table);

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
