/// The table of passes: a row each, columns that sort by value; in the first column the next pass comes first
/// and those that are over come last.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <vector>

#include "analysis/passages.h"

class modele_passages : public QAbstractTableModel {
    Q_OBJECT
public:
    enum colonne { delai, nom, elevation, duree, debut, azimuts, nb_colonnes };
    static constexpr int role_tri = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void pose(std::vector<passage> passages, std::vector<station> stations);
    /// The date that "in ..." counts from [days].
    void date(double j);
    const std::vector<passage>& passages() const { return passages_; }
    const std::vector<station>& stations() const { return stations_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& i, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

private:
    QVariant texte(const passage& p, int colonne) const;
    double cle(const passage& p, int colonne) const;

    std::vector<passage> passages_;
    std::vector<station> stations_;
    double date_ = 0;
    std::ptrdiff_t finis_ = -1; ///< passes that are over at the date
};

/// "1 h 05 min", "3 min 20 s", "12 s".
QString texte_delai(double secondes);
/// "67°".
QString texte_degres(double x);
/// "21/03/2001 13:12:00".
QString texte_date(double j);
