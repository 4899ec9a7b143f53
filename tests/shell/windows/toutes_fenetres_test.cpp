/// What every window, page and dialog must be: named for a screen reader, driven from the keyboard alone,
/// within a small screen, readable on light and dark. The program's own tables say which there are.
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <qcustomplot.h>

#include <cmath>
#include <functional>

#include "power/power_champs.h"
#include "shell/windows/etabli.h"
#include "shell/windows/fenetres.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu.h"
#include "shell/windows/menu_actions.h"
#include "tests/gestes.h"
#include "widgets/acces.h"
#include "widgets/fenetre.h"
#include "widgets/graphe.h"
#include "widgets/style.h"

namespace {

/// 1920x1080 at 200 %, and 1366x768 at 125 %, in logical pixels.
constexpr QSize petits_ecrans[] = {{960, 540}, {1092, 614}};
constexpr double contraste_min = 4.5;

QString nom_lisible(const QWidget* w) {
    for (const QWidget* p = w; p; p = p->parentWidget())
        if (!p->objectName().isEmpty() && !p->objectName().startsWith("qt_"))
            return (p == w ? "" : QString(w->metaObject()->className()) + " in ") + p->objectName();
    return w->metaObject()->className();
}

/// A part of a control of the toolkit: the box of a list, the arrow of a bar of tabs.
bool piece(const QWidget* w) {
    if (w->objectName().startsWith("qt_") || qobject_cast<const QScrollBar*>(w)) return true;
    const QWidget* p = w->parentWidget();
    return qobject_cast<const QLineEdit*>(p) || qobject_cast<const QAbstractSpinBox*>(p) ||
           qobject_cast<const QComboBox*>(p) || qobject_cast<const QTabBar*>(p) ||
           qobject_cast<const QMenuBar*>(p) || qobject_cast<const QHeaderView*>(w) ||
           (qobject_cast<const QAbstractButton*>(w) && qobject_cast<const QAbstractItemView*>(p));
}

/// What a person sets, presses or reads values from.
bool est_controle(const QWidget* w) {
    if (piece(w)) return false;
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractItemView*>(w) ||
           qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QAbstractSlider*>(w) ||
           qobject_cast<const QProgressBar*>(w) || qobject_cast<const QTextEdit*>(w) ||
           qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const graphe*>(w) ||
           (w->focusPolicy() & Qt::TabFocus && !qobject_cast<const QTabBar*>(w) &&
            !qobject_cast<const QTabWidget*>(w) && !qobject_cast<const QLabel*>(w) &&
            !qobject_cast<const QCustomPlot*>(w));
}

QList<QWidget*> controles(const QWidget* fenetre) {
    QList<QWidget*> liste;
    for (QWidget* w : fenetre->findChildren<QWidget*>())
        if (w->window() == fenetre && w->isVisible() && est_controle(w)) liste << w;
    return liste;
}

QString nom_accessible(QWidget* w) {
    // Of a list the toolkit tells the chosen entry here.
    if (qobject_cast<QComboBox*>(w)) return w->accessibleName();
    QAccessibleInterface* i = QAccessible::queryAccessibleInterface(w);
    return i ? i->text(QAccessible::Name).trimmed() : QString();
}

double luminance(const QColor& c) {
    const auto l = [](double x) { return x <= .03928 ? x / 12.92 : std::pow((x + .055) / 1.055, 2.4); };
    return .2126 * l(c.redF()) + .7152 * l(c.greenF()) + .0722 * l(c.blueF());
}
/// The contrast of the Web Content Accessibility Guidelines 2.1; ink may be transparent.
double contraste(const QColor& encre, const QColor& fond) {
    const auto m = [a = encre.alphaF()](double x, double y) { return x * a + y * (1 - a); };
    const QColor vue = QColor::fromRgbF(m(encre.redF(), fond.redF()), m(encre.greenF(), fond.greenF()),
                                        m(encre.blueF(), fond.blueF()));
    const double a = luminance(vue), b = luminance(fond);
    return (std::max(a, b) + .05) / (std::min(a, b) + .05);
}

/// The colour behind a text: that of the nearest parent that fills itself.
QColor fond_de(const QWidget* w) {
    for (const QWidget* p = w; p; p = p->parentWidget())
        if (p->autoFillBackground() || p->isWindow()) return p->palette().color(p->backgroundRole());
    return w->palette().color(QPalette::Window);
}

QPalette palette_sombre() {
    QPalette p(QColor(53, 53, 56), QColor(45, 45, 48));
    p.setColor(QPalette::Base, QColor(30, 30, 32));
    p.setColor(QPalette::AlternateBase, QColor(50, 50, 52));
    p.setColor(QPalette::Link, QColor(90, 170, 255));
    return p;
}

class toutes : public gestes::essai_fenetres {
protected:
    void SetUp() override {
        s.dossier_depart =
            trouve_dossier_depart(dossier.path().toStdString(), {}, {std::string(DOSSIER_DATA)});
        claire_ = qApp->palette();
        m = std::make_unique<menu>(s);
        m->fin_programme = [](int) {};
        m->choisit_fichier = [](QWidget*, const demande_fichier&) { return QString(); };
        m->show();
    }
    void TearDown() override {
        m.reset();
        qApp->setPalette(claire_);
    }

    using regard = std::function<void(QWidget* fenetre, const QString& lieu)>;

    /// Each tab of a window, and the tabs on it.
    void visite_onglets(QWidget* f, QWidget* racine, const QString& lieu, const regard& r) {
        QList<QTabWidget*> dehors;
        for (QTabWidget* t : racine->findChildren<QTabWidget*>()) {
            bool dedans = !t->isVisible();
            for (QTabWidget* autre : dehors) dedans = dedans || autre->isAncestorOf(t);
            if (!dedans) dehors << t;
        }
        if (dehors.isEmpty()) r(f, lieu);
        for (QTabWidget* t : dehors) {
            const int avant = t->currentIndex();
            for (int i = 0; i < t->count(); ++i) {
                t->setCurrentIndex(i);
                pose(f);
                visite_onglets(f, t->widget(i), lieu + " > " + QString(t->tabText(i)).remove('&'), r);
            }
            t->setCurrentIndex(avant);
        }
    }
    static void pose(QWidget* f) {
        f->raise();
        f->activateWindow();
        (void)QTest::qWaitForWindowActive(f);
        // On a busy machine the window is active before the program has taken the focus there.
        (void)QTest::qWaitFor([f] { return QApplication::activeWindow() == f->window(); });
        QCoreApplication::processEvents();
    }

    /// All pages of the workbench, all windows, and the boxes that the menus and windows open.
    void visite(const regard& r) {
        auto* e = m->findChild<etabli*>();
        for (const QString& nom : e->noms()) {
            e->montre(nom);
            pose(m.get());
            visite_onglets(m.get(), e->de(nom), "menu > " + nom, r);
        }
        for (const QString& nom : noms_fenetres()) {
            fenetre* f = m->montre_fenetre(nom);
            pose(f);
            // A run that starts by itself is let to its end.
            if (auto* relance = f->findChild<QPushButton*>("cmd_relance")) {
                EXPECT_TRUE(QTest::qWaitFor([&] { return relance->isEnabled(); }, 60000));
            }
            visite_onglets(f, f, nom, r);
            for (const char* dialogue : {"orb_tle"})
                if (auto* b = f->findChild<QAbstractButton*>(dialogue)) visite_boite([b] { b->click(); }, r);
            f->close();
        }
        pose(m.get());
        for (const entree_menu& x : entrees_menu())
            if (auto* a = m->findChild<QAction*>(x.controle);
                x.genre == genre_entree::commande && !*x.fenetre && !a->isCheckable())
                visite_boite([a] { a->trigger(); }, r);
        frmFirst premiere(s);
        premiere.show();
        pose(&premiere);
        r(&premiere, "frmFirst");
    }
    /// The box that a gesture opens, if it does.
    static void visite_boite(const std::function<void()>& geste, const regard& r) {
        QTimer::singleShot(50, qApp, [&r] {
            QWidget* boite = QApplication::activeModalWidget();
            if (!boite) return;
            pose(boite);
            r(boite, "dialog " + boite->objectName() + " " + boite->windowTitle());
            boite->close();
        });
        geste();
        QTest::qWait(60);
    }

    void note(const QString& lieu, const QString& texte) {
        const QString t = texte.startsWith("menu ") ? texte : lieu + ": " + texte;
        if (!trouve.contains(t)) trouve << t;
    }
    void juge() {
        EXPECT_TRUE(trouve.isEmpty()) << trouve.size() << " findings\n" << qPrintable(trouve.join('\n'));
    }

    void verifie_noms(QWidget* f, const QString& lieu);
    void verifie_mnemoniques(QWidget* f, const QString& lieu);
    void verifie_clavier(QWidget* f, const QString& lieu);
    void verifie_place(QWidget* f, const QString& lieu);
    static QStringList coupe(const QWidget* f);
    void verifie_contraste(QWidget* f, const QString& lieu);

    std::unique_ptr<menu> m;
    QStringList trouve;

private:
    QPalette claire_;
};

/// A name for each control, one of its own for each box that is typed in.
void toutes::verifie_noms(QWidget* f, const QString& lieu) {
    QHash<QString, QWidget*> boites;
    for (QWidget* w : controles(f)) {
        const QString nom = nom_accessible(w);
        if (nom.isEmpty()) note(lieu, "no accessible name: " + nom_lisible(w));
        if (qobject_cast<QLineEdit*>(w) && !champ_du_controle(w).isEmpty() &&
            QAccessible::queryAccessibleInterface(w)->text(QAccessible::Description).isEmpty())
            note(lieu, "a setting without description: " + nom_lisible(w));
        const bool saisie = qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) ||
                            qobject_cast<QAbstractSpinBox*>(w) || qobject_cast<QAbstractSlider*>(w);
        if (!saisie || nom.isEmpty()) continue;
        if (QWidget* autre = boites.value(nom);
            autre && !(autre->parentWidget() == w->parentWidget() && autre->metaObject() != w->metaObject()))
            note(lieu, QString("same name \"%1\": %2, %3").arg(nom, nom_lisible(autre), nom_lisible(w)));
        boites[nom] = w;
    }
}

void toutes::verifie_mnemoniques(QWidget* f, const QString& lieu) {
    QHash<QString, QString> pris;
    const auto prend = [&](const QString& texte) {
        const QString touche = QKeySequence::mnemonic(texte).toString();
        if (touche.isEmpty()) return;
        if (pris.contains(touche)) note(lieu, touche + " twice: " + pris[touche] + ", " + texte);
        pris[touche] = texte;
    };
    for (QWidget* w : f->findChildren<QWidget*>()) {
        if (w->window() != f || !w->isVisible()) continue;
        if (auto* l = qobject_cast<QLabel*>(w)) {
            if (l->buddy()) prend(l->text());
        } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            prend(b->text());
            if (qobject_cast<QPushButton*>(b) && !b->text().isEmpty() && b->isEnabled() && !piece(b) &&
                !qobject_cast<QDialogButtonBox*>(b->parentWidget()) && // Enter and Escape
                QKeySequence::mnemonic(b->text()).isEmpty())
                note(lieu, "no mnemonic: " + nom_lisible(b) + " " + b->text());
        } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
            prend(g->title());
        } else if (auto* t = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < t->count(); ++i) prend(t->tabText(i));
        } else if (auto* barre = qobject_cast<QMenuBar*>(w)) {
            for (const QAction* a : barre->actions()) {
                if (QKeySequence::mnemonic(a->text()).isEmpty()) note(lieu, "no mnemonic: menu " + a->text());
                prend(a->text());
            }
        }
    }
}

/// Tab goes round all enabled controls; the first one lands on a control that is seen.
void toutes::verifie_clavier(QWidget* f, const QString& lieu) {
    if (QWidget* w = f->focusWidget()) w->clearFocus();
    QSet<QWidget*> atteints;
    QWidget* premier = nullptr;
    constexpr int tours_max = 600, liens_max = 40;
    int n = 0, sur_place = 0;
    for (; n < tours_max; ++n) {
        QWidget* avant = QApplication::focusWidget();
        QTest::keyClick(avant && avant->window() == f ? avant : f, Qt::Key_Tab);
        QWidget* w = QApplication::focusWidget();
        if (!w || w->window() != f) break;
        // From link to link of a text the focus stays where it is.
        if (w == avant && ++sur_place > liens_max) break;
        if (!premier) {
            premier = w;
            if (!est_controle(w) && !qobject_cast<QTabBar*>(w) && !qobject_cast<QLabel*>(w))
                note(lieu, "the first Tab lands on " + nom_lisible(w));
        } else if (w == premier && w != avant) {
            break;
        }
        atteints << w;
        if (w->visibleRegion().isEmpty()) note(lieu, "Tab lands out of sight: " + nom_lisible(w));
    }
    if (n == tours_max) note(lieu, "Tab does not come round");
    for (QWidget* w : controles(f)) {
        if (!w->isEnabled() || atteints.contains(w)) continue;
        if (qobject_cast<QProgressBar*>(w) || qobject_cast<graphe*>(w)) continue; // read, not set
        if (qobject_cast<QToolBar*>(w->parentWidget())) continue;                 // each has its menu entry
        bool par_un_autre = w->focusProxy() && atteints.contains(w->focusProxy());
        for (const QWidget* a : atteints)
            par_un_autre = par_un_autre || (w->isAncestorOf(a) && a->isVisible());
        if (auto* b = qobject_cast<QAbstractButton*>(w))
            // Arrows choose within a group.
            for (QWidget* a : atteints)
                if (auto* autre = qobject_cast<QAbstractButton*>(a))
                    par_un_autre =
                        par_un_autre || (b->group() ? b->group() == autre->group()
                                                    : b->autoExclusive() && autre->autoExclusive() &&
                                                          b->parentWidget() == autre->parentWidget());
        if (!par_un_autre) note(lieu, "Tab does not reach " + nom_lisible(w));
    }
}

/// What stands out of the window where nothing scrolls, and texts that have less room than they need.
QStringList toutes::coupe(const QWidget* f) {
    QStringList liste;
    for (QWidget* w : f->findChildren<QWidget*>()) {
        if (w->window() != f || !w->isVisible() || piece(w)) continue;
        bool defile = false;
        const QRect place(w->mapTo(f, QPoint(0, 0)), w->size());
        QRect vue = place & f->rect();
        for (const QWidget* p = w->parentWidget(); p != f; p = p->parentWidget()) {
            defile = defile || qobject_cast<const QAbstractScrollArea*>(p);
            vue &= QRect(p->mapTo(f, QPoint(0, 0)), p->size());
        }
        if (!defile && est_controle(w) && vue != place) liste << "hidden in part: " + nom_lisible(w);
        const auto* l = qobject_cast<QLabel*>(w);
        const bool texte = (l && !l->text().isEmpty()) || qobject_cast<QAbstractButton*>(w);
        const QSize min = w->minimumSizeHint();
        if (texte && (w->width() < min.width() || w->height() < min.height()))
            liste << QString("cut: %1, %2x%3 of %4x%5")
                         .arg(nom_lisible(w))
                         .arg(w->width())
                         .arg(w->height())
                         .arg(min.width())
                         .arg(min.height());
    }
    return liste;
}

/// At the size of a small screen nothing is cut that cannot be scrolled to.
void toutes::verifie_place(QWidget* f, const QString& lieu) {
    for (const QSize ecran : petits_ecrans) {
        const QSize min = f->minimumSizeHint().expandedTo(f->minimumSize());
        if (min.width() > ecran.width() || min.height() > ecran.height()) {
            note(lieu, QString("needs %1x%2").arg(min.width()).arg(min.height()));
        }
    }
    const QSize avant = f->size();
    f->resize(petits_ecrans[0]);
    QStringList coupes;
    // The layouts come to rest first.
    (void)QTest::qWaitFor([&] { return (coupes = coupe(f)).isEmpty(); }, 300);
    for (const QString& c : coupes) note(lieu, c);
    f->resize(avant);
    QCoreApplication::processEvents();
}

void toutes::verifie_contraste(QWidget* f, const QString& lieu) {
    const auto compare = [&](const QString& quoi, const QColor& encre, const QColor& fond) {
        const double c = contraste(encre, fond);
        if (c < contraste_min)
            note(lieu, QString("%1: %2 on %3, %4").arg(quoi, encre.name(), fond.name()).arg(c, 0, 'f', 2));
    };
    for (QWidget* w : f->findChildren<QWidget*>()) {
        if (w->window() != f || !w->isVisible()) continue;
        const QPalette& p = w->palette();
        if (qobject_cast<QLabel*>(w) || qobject_cast<QGroupBox*>(w) || qobject_cast<QCheckBox*>(w) ||
            qobject_cast<QRadioButton*>(w))
            compare(nom_lisible(w), p.color(w->foregroundRole()), fond_de(w));
        else if (qobject_cast<QLineEdit*>(w))
            compare(nom_lisible(w), p.color(QPalette::Text), p.color(QPalette::Base));
        else if (qobject_cast<QAbstractButton*>(w) && !piece(w))
            compare(nom_lisible(w), p.color(QPalette::ButtonText), p.color(QPalette::Button));
        else if (auto* d = qobject_cast<QCustomPlot*>(w)) {
            const QColor fond = p.color(QPalette::Base);
            for (const QCPAxisRect* r : d->axisRects())
                for (const QCPAxis* a : r->axes()) {
                    compare("axis labels of " + nom_lisible(w), a->labelColor(), fond);
                    compare("tick labels of " + nom_lisible(w), a->tickLabelColor(), fond);
                }
            if (d->legend) compare("legend of " + nom_lisible(w), d->legend->textColor(), fond);
        } else if (auto* v = qobject_cast<QAbstractItemView*>(w); v && v->model()) {
            for (int i = 0; i < std::min(20, v->model()->rowCount()); ++i)
                for (int j = 0; j < v->model()->columnCount(); ++j) {
                    const QVariant encre = v->model()->index(i, j).data(Qt::ForegroundRole);
                    if (encre.isValid())
                        compare("cells of " + nom_lisible(w), encre.value<QBrush>().color(),
                                p.color(QPalette::Base));
                }
        }
    }
}

} // namespace

TEST_F(toutes, can_be_named_and_driven_by_the_keyboard_alone) {
    for (const drapeau externes : {vrai, faux}) { // each mounting of the cells has boxes of its own
        s.power.opt_panel_ext = externes;
        visite([this](QWidget* f, const QString& lieu) {
            verifie_noms(f, lieu);
            verifie_mnemoniques(f, lieu);
            verifie_clavier(f, lieu);
        });
    }
    juge();
}

TEST_F(toutes, fit_a_small_screen) {
    visite([this](QWidget* f, const QString& lieu) { verifie_place(f, lieu); });
    juge();
}

TEST_F(toutes, can_be_read_on_light_and_dark) {
    using enum style::role;
    for (QPalette p : {qApp->palette(), palette_sombre()}) {
        style::lisible(p); // as with the palette of a desktop
        qApp->setPalette(p);
        const QString ton = style::sombre() ? "dark " : "light ";
        for (const style::role r :
             {generateur, batterie, charge_utile, perte, terre, axe_x, axe_y, axe_z, trait, discret, alerte})
            for (const QPalette::ColorRole fond : {QPalette::Window, QPalette::Base})
                if (const double c = contraste(
                        r == discret || r == trait ? style::couleur(r) : style::en_texte(style::couleur(r)),
                        qApp->palette().color(fond));
                    c < contraste_min)
                    note(ton, QString("role %1: %2").arg(int(r)).arg(c, 0, 'f', 2));
        for (const QPalette::ColorGroup g : {QPalette::Active, QPalette::Disabled})
            for (const auto& [encre, fond] : {std::pair{QPalette::WindowText, QPalette::Window},
                                              {QPalette::Text, QPalette::Base},
                                              {QPalette::Text, QPalette::AlternateBase},
                                              {QPalette::ButtonText, QPalette::Button},
                                              {QPalette::PlaceholderText, QPalette::Base},
                                              {QPalette::PlaceholderText, QPalette::Window},
                                              {QPalette::ToolTipText, QPalette::ToolTipBase},
                                              {QPalette::HighlightedText, QPalette::Highlight},
                                              {QPalette::Link, QPalette::Window},
                                              {QPalette::Link, QPalette::Base}})
                if (const double c =
                        contraste(qApp->palette().color(g, encre), qApp->palette().color(g, fond));
                    c < contraste_min)
                    note(ton,
                         QString("group %1, %2 on %3: %4").arg(g).arg(encre).arg(fond).arg(c, 0, 'f', 2));
        visite([&](QWidget* f, const QString& lieu) { verifie_contraste(f, ton + lieu); });
    }
    juge();
}
