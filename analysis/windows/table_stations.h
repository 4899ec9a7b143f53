/// The étude's stations in a table: name, place, mask. Without any, those of the program's data stand there,
/// and the first edit makes them the étude's own.
#pragma once

#include <QWidget>

#include <vector>

#include "orbit/station.h"

class QLabel;
class QPushButton;
class QTableWidget;

class table_stations : public QWidget {
    Q_OBJECT
public:
    explicit table_stations(QWidget* parent = nullptr);

    /// Shows the stations; `du_programme` when they are not the étude's.
    void montre(const std::vector<station>& stations, bool du_programme);
    void choisit(int ligne);
    /// Adds a station at a place and begins the edit of its name.
    void ajoute(double longitude, double latitude);

signals:
    /// The stations as they now stand, and what was done ("Station Toulouse : masque 5 → 10").
    void modifiees(const std::vector<station>& stations, const QString& libelle);
    /// The program's stations are asked for again.
    void demande_defaut();

private:
    void lit_case(int ligne, int colonne);
    void retire();
    void refuse(const QString& raison);

    QTableWidget* table_;
    QPushButton* retire_;
    QLabel* mot_;
    std::vector<station> stations_;
    bool remplit_ = false;
};
