/// The header of a column of results: a text that can be clicked (or chosen with the space bar), marked while
/// its column is the active one, with the colour of its curve.
#pragma once

#include <QLabel>

class entete_colonne : public QLabel {
    Q_OBJECT
public:
    /// `colonne` from 0.
    explicit entete_colonne(int colonne, QWidget* parent = nullptr);
    /// What its variable means, for the tooltip.
    void montre_sens(const QString& sens);
    void marque_active(bool active);
    /// Keeps room for the longest word, so that none is cut.
    void setText(const QString& texte);

signals:
    void clique();
    void vide(); ///< the column is to be emptied

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    int colonne_;
    bool active_ = false;
};
