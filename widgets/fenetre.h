/// The base of every window but the main one: remembers its place, reloads when a project is opened, closes
/// on Escape, asks for its section of the guide on F1, or for the entry of the box in focus.
#pragma once

#include <QScrollArea>
#include <QWidget>

#include <functional>

#include "shell/marques.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

/// Silences the controls of a window that is going away: a box that loses the focus with it must not call
/// back into the part of the window that is gone already.
void fait_taire(QWidget* fenetre);

/// Gives a window, not yet shown, the place that `saveGeometry` kept; false, and nothing done, where that is
/// damaged or does not fit a screen that is there.
bool restaure_geometrie(QWidget* w, const QByteArray& gardee);

/// A page that scrolls where the screen is smaller than it: the Tab key goes to its controls.
QScrollArea* defilee(QWidget* page);

class fenetre : public QWidget {
    Q_OBJECT
public:
    /// `nom` is the window's object name and the key of its remembered geometry.
    fenetre(marques& m, const QString& nom, const QString& titre, QWidget* parent = nullptr);
    ~fenetre() override;

    /// "conf" for windows that reload with an energy project, "attconf" with an attitude project.
    virtual QString tag() const { return {}; }
    /// Reads the records into the controls.
    virtual void form_load() {}
    /// Brings a page forward, counted from 0.
    virtual void montre_page(int) {}

    /// A message in a bar on top of the window's content, without a click to answer; empty hides it.
    void montre_bandeau(const QString& texte);
    /// The same with a command beside it, done once: the bar then goes.
    void propose_bandeau(const QString& texte, const QString& commande, std::function<void()> fait);
    QString bandeau() const; ///< its words, empty where there is none
    /// The same for some seconds, unless the bar says something already.
    void signale(const QString& texte);
    /// Puts a strip at the foot of the window, below its content.
    void pose_pied(QWidget* pied);
    /// Puts the button that closes the window at the right end of its foot.
    void pose_quitter(QPushButton* b);
    /// A mention that the title bears behind its own words; empty for none.
    void mentionne(const QString& mention);
    /// A line on top of the window that stays as long as what it says; empty hides it. A link in it asks for
    /// the window or page that it names, "power_conf/3".
    void montre_note(const QString& texte);

signals:
    /// The configuration has changed: the main window refreshes its summary and marks results as outdated.
    void configuration_changee();
    /// The window has set the period of the simulations: who shows it shows it anew.
    void periode_changee();
    /// Another window is asked for ("power_conf", 3): used by links and by the charge-curve message.
    void demande_fenetre(const QString& nom, int page);
    /// Results have been computed, or a simulation has gone back to its start: the main window renews its
    /// marks.
    void resultats_changes();
    /// The pace of the complete simulation has changed.
    void allure_changee();
    /// The section of the guide that tells of a window is asked for, or the entry of the number that the box
    /// in focus edits ("energie.bat_c").
    void demande_aide(const QString& nom);

protected:
    /// The layout area below the message bar; windows put their content in it.
    QWidget* contenu() { return contenu_; }
    /// Sets the configuration-changed mark and tells the main window.
    void marque_changement();
    /// Notes that results hold for the configuration as it stands, and tells the main window.
    void resultats_calcules();
    /// The report of a numerical fault that ended a run: `calcul` with its article ("la simulation"), date,
    /// routine or reason, and what to do about it.
    void rapporte_faute(const QString& calcul, double date, const QString& raison,
                        const QString& conseil = {});
    /// True when a condition of a run holds; otherwise the warning `texte` is shown.
    bool exige(bool condition, const QString& texte);
    /// The same for what is mended in another window: it comes forward at that page.
    bool exige(bool condition, const QString& texte, const QString& nom, int page);
    /// Tells `texte`, then asks for the page of the window where it is mended.
    void renvoie(const QString& texte, const QString& nom, int page);

    void closeEvent(QCloseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    marques& marques_;
    QString mention_;
    QLabel* note_;
    QLabel* bandeau_;
    QPushButton* cmd_bandeau_;
    std::function<void()> propose_;
    QWidget* contenu_;
    QHBoxLayout* pied_;
    bool geometrie_lue_ = false;
};
