/// The start page: the examples as cards, each with its verdict, the recent projects, and the way to the
/// default satellite.
#pragma once

#include <QPushButton>

#include "shell/windows/exemples.h"
#include "widgets/page.h"
#include "widgets/signe_verdict.h"
#include "widgets/tache.h"

class QGridLayout;
class QVBoxLayout;

/// An example's verdict.
struct verdict_exemple {
    etat_verdict etat = etat_verdict::inconnu;
    QString phrase;
};

/// A card that can be clicked or reached by the keyboard: a picture, a title, the verdict's sign and a line.
class carte : public QPushButton {
    Q_OBJECT
public:
    carte(const exemple& e, QWidget* parent = nullptr);
    void montre_verdict(const verdict_exemple& v);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    QString contenu_;
    signe_verdict* signe_;
};

class accueil : public page {
    Q_OBJECT
public:
    /// `dossier`: the program's folder, with its data files.
    accueil(const QList<exemple>& exemples, const QString& dossier, QWidget* parent = nullptr);

    void montre_recents(const QStringList& chemins);

signals:
    void demande_exemple(const exemple& e);
    void demande_fichier(const QString& chemin);
    /// "Ouvrir un projet" and "Satellite par défaut".
    void demande_ouverture();
    void demande_defaut();

protected:
    void resizeEvent(QResizeEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    void range_cartes();
    void juge_exemples();

    QList<carte*> cartes_;
    QGridLayout* grille_;
    QVBoxLayout* recents_;
    int colonnes_ = 0;
    QList<exemple> exemples_;
    QString dossier_;
    bool juges_ = false;
    tache<QList<verdict_exemple>> tache_;
};
