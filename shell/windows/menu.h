/// The main window: menus, toolbars, the simulation frame, and the workbench with its pages. It
/// lives for the whole program, opens every other window on demand and owns them.
#pragma once

#include <functional>
#include <map>

#include <QMainWindow>

#include "shell/session.h"

class QAction;
class QGroupBox;
class QMenu;
class QToolBar;
class accueil;
class etabli;
class etape_etude;
class fenetre;
class fra_simulation;
class rapporteur;
class verdict_vivant;
struct atelier_etude;
struct champ_etude;
struct element_etude;
struct exemple;
struct lieu;

/// What a file dialog asks for.
struct demande_fichier {
    QString titre;
    QString filtre; ///< Qt form: "Text (*.pwr);;..."
    QString dossier;
    QString nom;    ///< proposed name
    QString ending; ///< added to a name without one
    bool ouvrir = true;
};

class menu : public QMainWindow {
    Q_OBJECT
public:
    /// Fills the session with the defaults.
    explicit menu(session& s, QWidget* parent = nullptr);
    ~menu() override;

    /// Opens a file by its ending: .kestrel, .pwr, .att or .orb. A missing file is told.
    void ouvre(const QString& chemin);
    /// A .pwr that cannot be read ends the program: what was read so far has replaced the session's values.
    void ouvre_energie(const QString& chemin);
    void ouvre_attitude(const QString& chemin);
    void ouvre_orbite(const QString& chemin);
    /// Opens files of a project together, an orbit first, so that nothing runs on another one.
    void ouvre_tous(QStringList chemins);
    /// An example opens as a copy: saving asks for a place.
    void ouvre_exemple(const exemple& e);

    /// An étude in the place of everything; what is not saved is asked for first. `libelle` names the undo
    /// step.
    void ouvre_etude(const QString& chemin, const QString& libelle = {});
    /// Offers what a crash has left; it opens nothing by itself.
    void propose_recuperation();

    /// A word in the status bar, and in the window that is in front.
    void signale(const QString& texte);

    /// Opens a window, or brings it forward, at a page (-1: as it stands). nullptr when there is none. The
    /// name of a page of the workbench brings that forward.
    fenetre* montre_fenetre(const QString& nom, int page = -1);

    /// Replaced by tests: how a file is chosen (empty when cancelled), and how the program ends.
    std::function<QString(QWidget*, const demande_fichier&)> choisit_fichier;
    std::function<void(int)> fin_programme;

protected:
    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dropEvent(QDropEvent* e) override;

private:
    // Construction (menu.cpp)
    void construit_menus();
    void construit_pages(const QList<exemple>& exemples);
    void construit_entete(QWidget* entete);
    void clic_barre(const QToolBar* barre, const QAction* touche);
    void commande(const QString& controle);
    void remplit_exemples(const QList<exemple>& exemples);
    void configuration_a_change();
    void rafraichit();

    // The other windows (menu_fenetres.cpp)
    void montre_aide(const QString& de);
    void ajoute_raccourcis(fenetre* f);
    void remplit_fenetres();

    // What "Chercher…" finds (menu_recherche.cpp)
    QList<lieu> lieux();
    lieu lieu_du_champ(const element_etude& x);
    void montre_champ(const champ_etude& c, const QString& chemin);
    void ouvre_recherche();

    // The model (menu_modele.cpp)
    void construit_modele();
    void montre_modele();
    void montre_modele(fenetre* f);
    QString titre_du_modele() const;

    void a_propos();
    void termine(int code);

    // Project commands (menu_projets.cpp)
    void mn_fichier_ouvrir();
    bool mn_fichier_enreg();
    bool mn_fichier_enregsous();
    void mn_attfich_ouvrir();
    bool mn_attfich_enreg();
    bool mn_attfich_enregsous();
    bool enregistre_projet();
    bool enregistre_orbite();
    bool est_exemple(const QString& chemin) const;
    void propose_orbite(const QString& chemin_energie);
    bool ecrit_energie(const QString& chemin);
    void fatale(const QString& texte);
    void recharge(const QString& tag);
    void montre_titres();
    void offre_copie(const QString& chemin);
    void note_recent(const QString& chemin);
    void montre_recents();

    // The étude (menu_etude.cpp)
    friend class etape_etude;
    void construit_etude();
    void note_bientot();
    void note_etape();
    void montre_etapes();
    void montre_titre_etude();
    void remonte(bool refaire);
    void recharge_tout();
    QStringList non_enregistre(bool avec_energie) const;
    bool laisse_etude(bool avec_energie);
    QString rappel_etude() const;
    QString enregistrement(const QString& commande) const;
    void nouvelle_etude();
    void mn_etude_notes();
    void mn_etude_ouvrir();
    void prend_etude(const etude& e, const QString& chemin);
    void nomme_etude(const QString& chemin);
    /// An étude is at hand, with a file or as the copy of an example: Ctrl+S saves it.
    bool etude_courante() const { return !s_.chemin_etude.empty() || !s_.modele_etude.empty(); }
    bool enregistre_etude();
    bool enregistre_etude_sous();
    bool ecrit_etude(const QString& chemin);
    void garde_copie();
    void oublie_copie();

    session& s_;
    std::unique_ptr<atelier_etude> atelier_;
    std::unique_ptr<rapporteur> rapporteur_;
    std::map<QString, std::unique_ptr<fenetre>> fenetres_;
    fra_simulation* fra_simulation_ = nullptr;
    QGroupBox* z_energie_ = nullptr;
    QGroupBox* z_attitude_ = nullptr;
    etabli* etabli_ = nullptr;
    verdict_vivant* verdict_ = nullptr;
    accueil* accueil_ = nullptr;
    QMenu* mn_recents_ = nullptr;
    bool terminee_ = false; ///< the end has been decided: no question any more
};
