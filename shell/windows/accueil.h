/// The start page: the samples as cards, the recent projects, and the way to the default satellite.
#pragma once

#include <QPushButton>

#include "shell/windows/exemples.h"
#include "widgets/page.h"

class QGridLayout;
class QVBoxLayout;

/// A card that can be clicked or reached by the keyboard: a picture, a title and two lines.
class carte : public QPushButton {
    Q_OBJECT
public:
    carte(const exemple& e, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
};

class accueil : public page {
    Q_OBJECT
public:
    explicit accueil(const QList<exemple>& exemples, QWidget* parent = nullptr);

    void montre_recents(const QStringList& chemins);

signals:
    void demande_exemple(const exemple& e);
    void demande_fichier(const QString& chemin);
    /// "Ouvrir un projet" and "Satellite par défaut".
    void demande_ouverture();
    void demande_defaut();

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    void range_cartes();

    QList<carte*> cartes_;
    QGridLayout* grille_;
    QVBoxLayout* recents_;
    int colonnes_ = 0;
};
