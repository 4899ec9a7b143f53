/// A user without a plan: a thousand random gestures over all windows, the same ones each time. The program
/// neither ends nor hangs, and what it holds at the end can be saved and read again.
///
/// KESTREL_GESTES and KESTREL_GRAINE take another number of gestures and another seed, KESTREL_PATIENCE the
/// seconds that a gesture may last, KESTREL_BAVARD tells each of them.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTabBar>
#include <QWheelEvent>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

#include <unistd.h>

#include "project/etude_fichier.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu.h"
#include "tests/gestes.h"

using namespace gestes;

namespace {

int reglage(const char* nom, int sinon) {
    const QByteArray t = qgetenv(nom);
    return t.isEmpty() ? sinon : t.toInt();
}

/// Ends the process when no gesture comes to its end for too long, and says which one.
class veilleur {
public:
    veilleur() : fil_([this](const std::stop_token& fin) { surveille(fin); }) {}

    void note(const QString& geste) {
        std::snprintf(dernier_, sizeof dernier_, "%s", geste.toUtf8().constData());
        ++compte_;
    }

private:
    void surveille(const std::stop_token& fin) {
        int vu = -1;
        for (int s = 0; !fin.stop_requested(); ++s) {
            if (compte_ != vu) s = 0;
            vu = compte_;
            if (s > 10 * patience_) {
                std::fprintf(stderr, "gesture %d hangs: %s\n", vu, dernier_);
                std::abort();
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

    const int patience_ = reglage("KESTREL_PATIENCE", 240); // [s] under the sanitizers, on a busy machine
    std::atomic<int> compte_ = 0;
    char dernier_[400] = {};
    std::jthread fil_;
};

class marche : public essai_fenetres {
protected:
    void SetUp() override {
        if (geteuid() == 0) { // as most users, who may not write everywhere
            ASSERT_EQ(chown(dossier.path().toUtf8().constData(), 65534, 65534), 0);
            ASSERT_EQ(setresuid(65534, 65534, 65534), 0);
        }
        qputenv("HOME", dossier.filePath("chez_soi").toUtf8());
        for (const char* nom : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            qunsetenv(nom);
        ASSERT_TRUE(QDir(dossier.path()).mkpath("chez_soi"));
        remplace_repondeur(nullptr);
        for (const char* nom : {"flux_solaire.txt", "densite.txt", "igrf14.txt", "stations.txt"})
            QFile::copy(QString(DOSSIER_DATA "/") + nom, dossier.filePath(nom));
        prepare_fichiers();
        demarre();
    }
    void TearDown() override { premiere_.reset(); }

    void prepare_fichiers() {
        for (const QString& f :
             {QStringLiteral(DONNEES_TEST "/etude.kestrel"), QStringLiteral(DONNEES_TEST "/iss.tle"),
              QStringLiteral(DOSSIER_DATA "/exemples/cubesat.pwr"),
              QStringLiteral(DOSSIER_DATA "/exemples/cubesat.orb"),
              QStringLiteral(DONNEES_TEST "/cas/att_02_amort_0.att")}) {
            QFile::copy(f, dossier.filePath(QFileInfo(f).fileName()));
            fichiers_ << dossier.filePath(QFileInfo(f).fileName());
            ecrit(dossier.filePath("abime_" + QFileInfo(f).fileName()), contenu(f).left(700));
            fichiers_ << dossier.filePath("abime_" + QFileInfo(f).fileName());
        }
        fichiers_ << dossier.filePath("absent.kestrel") << dossier.path();
    }

    void demarre() {
        s = {};
        s.dossier_depart = dossier.path().toStdString();
        premiere_ = std::make_unique<frmFirst>(s);
        premiere_->show();
        clique(premiere_.get(), "cmdOK");
        m_ = premiere_->principale();
        ASSERT_NE(m_, nullptr);
        m_->fin_programme = [this](int) { parti_ = true; };
    }

    /// Each gesture asks for the next one first: it may open a box or start a run, which serve events
    /// themselves.
    void marche_de(int gestes) {
        reste_ = gestes;
        suivant();
        while (reste_ > 0 || dedans_ > 0) {
            QApplication::processEvents(QEventLoop::AllEvents, 50);
        }
    }

    int tire(int n) { return n <= 0 ? 0 : static_cast<int>(alea_() % static_cast<unsigned>(n)); }
    template <class L>
    auto tire_dans(const L& liste) {
        return liste[static_cast<typename L::size_type>(tire(static_cast<int>(liste.size())))];
    }

private:
    void recommence() {
        parti_ = false;
        ++departs_;
        m_ = nullptr;
        premiere_.reset();
        ++dedans_;
        suivant(); // the new start may offer what has been kept
        demarre();
        --dedans_;
    }

    void suivant() {
        QTimer::singleShot(2, qApp, [this] {
            if (reste_ <= 0 || parti_) return leve_tout();
            --reste_;
            suivant();
            ++dedans_;
            geste();
            --dedans_;
        });
    }

    /// At the end, and where the program has ended under a gesture: runs are stopped by closing their
    /// windows, and every loop that waits is left, as the program's own end does.
    void leve_tout() {
        if (dedans_ == 0) {
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
            QApplication::exec(); // loops may run again
            return parti_ && reste_ > 0 ? recommence() : void();
        }
        QCoreApplication::exit(); // first: what a closing window asks is not waited for
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w != m_ && w->windowType() == Qt::Window) w->close();
        suivant();
    }

    void geste() {
        if (auto* p = qobject_cast<QMenu*>(QApplication::activePopupWidget())) return au_menu(p);
        if (QWidget* p = QApplication::activePopupWidget()) return a_la_touche(p);
        if (auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) return au_fichier(d);
        if (QWidget* d = QApplication::activeModalWidget()) return tire(4) ? au_controle(d) : a_la_touche(d);
        if (QAction* a = choisie_) {
            choisie_ = nullptr;
            note("choice " + a->text(), nullptr);
            return a->trigger();
        }
        const QList<QWidget*> ouvertes = fenetres();
        if (ouvertes.isEmpty() || !m_) return;
        const int sorte = tire(100);
        if (sorte < 8) return a_l_action();
        if (sorte < 10) return au_depot();
        QWidget* f = tire_dans(ouvertes);
        if (sorte < 12) return a_la_taille(f);
        if (sorte < 13 && f != m_) return a_la_fermeture(f);
        if (sorte < 20) return a_la_touche(f);
        au_controle(f);
    }

    QList<QWidget*> fenetres() const {
        QList<QWidget*> l;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->windowType() != Qt::ToolTip) l << w;
        // Their order in memory must not choose.
        std::sort(l.begin(), l.end(),
                  [](QWidget* a, QWidget* b) { return a->objectName() < b->objectName(); });
        return l;
    }

    void note(const QString& quoi, const QWidget* ou) {
        const QString geste =
            quoi + " " + (ou ? ou->window()->objectName() + "/" + ou->objectName() : QString());
        veilleur_.note(geste);
        if (bavard_) std::fprintf(stderr, "%d %s\n", reste_, geste.toUtf8().constData());
    }

    void au_menu(QMenu* p) {
        const QList<QAction*> actions = p->actions();
        note("menu", p);
        if (tire(3) == 0 || actions.isEmpty()) return (void)p->close();
        QAction* a = tire_dans(actions);
        p->close();
        if (a->isEnabled() && !a->menu()) choisie_ = a; // done once the menu has gone, as by a hand
    }

    void au_fichier(QFileDialog* d) {
        note("file dialog", d);
        if (tire(4) == 0) return d->reject();
        auto* nom = d->findChild<QLineEdit*>("fileNameEdit");
        if (!nom) return d->reject();
        const QStringList noms = {"a", "a.b", "é à", "../x", "a.pwr", "fig.png", "/nulle/part"};
        nom->setText(tire(2) ? tire_dans(fichiers_) : dossier.filePath(tire_dans(noms)));
        QTest::keyClick(nom, Qt::Key_Return);
        if (d->isVisible() && tire(2)) d->reject();
    }

    void a_l_action() {
        QList<QAction*> l;
        for (QAction* a : m_->findChildren<QAction*>())
            if (a->isEnabled() && a->isVisible() && !a->menu() && !a->isSeparator()) l << a;
        if (l.isEmpty()) return;
        QAction* a = tire_dans(l);
        note("action " + a->objectName() + " " + a->text(), m_);
        a->trigger();
    }

    void au_depot() {
        auto* donnees = new QMimeData;
        donnees->setUrls({QUrl::fromLocalFile(tire_dans(fichiers_))});
        note("drop " + donnees->urls().first().toString(), m_);
        QDropEvent e(QPointF(50, 50), Qt::CopyAction, donnees, Qt::LeftButton, {});
        QApplication::sendEvent(m_, &e);
        delete donnees;
    }

    void a_la_taille(QWidget* f) {
        note("size", f);
        f->resize(200 + tire(1400), 150 + tire(900));
    }

    void a_la_fermeture(QWidget* f) {
        note("close", f);
        f->close();
    }

    void a_la_touche(QWidget* f) {
        struct touche {
            Qt::Key cle;
            Qt::KeyboardModifiers avec;
        };
        static const QList<touche> touches = {{Qt::Key_Escape, {}},
                                              {Qt::Key_Return, {}},
                                              {Qt::Key_Tab, {}},
                                              {Qt::Key_Space, {}},
                                              {Qt::Key_Down, {}},
                                              {Qt::Key_Up, {}},
                                              {Qt::Key_S, {}},
                                              {Qt::Key_T, {}},
                                              {Qt::Key_Delete, {}},
                                              {Qt::Key_F1, {}},
                                              {Qt::Key_F5, {}},
                                              {Qt::Key_Z, Qt::ControlModifier},
                                              {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier},
                                              {Qt::Key_K, Qt::ControlModifier},
                                              {Qt::Key_1, Qt::ControlModifier},
                                              {Qt::Key_3, Qt::ControlModifier},
                                              {Qt::Key_4, Qt::ControlModifier},
                                              {Qt::Key_5, Qt::ControlModifier},
                                              {Qt::Key_6, Qt::ControlModifier},
                                              {Qt::Key_7, Qt::ControlModifier},
                                              {Qt::Key_S, Qt::ControlModifier},
                                              {Qt::Key_V, Qt::ControlModifier}};
        const touche t = tire_dans(touches);
        QWidget* cible = f->focusWidget() ? f->focusWidget() : f;
        note(QString("key %1").arg(t.cle, 0, 16), cible);
        QTest::keyClick(cible, t.cle, t.avec);
    }

    static bool accessible(const QWidget* w) {
        return w->isEnabled() && w->isVisible() && !w->visibleRegion().isEmpty();
    }

    void au_controle(QWidget* f) {
        QList<QWidget*> l;
        for (QWidget* w : f->findChildren<QWidget*>())
            if (accessible(w) && w->window() == f &&
                (w->focusPolicy() != Qt::NoFocus || qobject_cast<QAbstractButton*>(w) ||
                 qobject_cast<QTabBar*>(w) || (w->children().isEmpty() && tire(10) == 0)))
                l << w;
        if (l.isEmpty()) return a_la_touche(f);
        QWidget* w = tire_dans(l);
        const auto* bouton = qobject_cast<const QAbstractButton*>(w);
        note(w->metaObject()->className() + (bouton ? " " + bouton->text() : QString()), w);
        if (auto* b = qobject_cast<QLineEdit*>(w)) return a_la_saisie(b);
        if (auto* c = qobject_cast<QComboBox*>(w); c && c->count() > 0 && tire(3)) {
            c->setFocus();
            c->setCurrentIndex(tire(c->count()));
            emit c->activated(c->currentIndex());
            return;
        }
        if (auto* t = qobject_cast<QTabBar*>(w)) return t->setCurrentIndex(tire(t->count()));
        if (auto* g = qobject_cast<QAbstractSlider*>(w))
            return g->setValue(g->minimum() + tire(g->maximum() - g->minimum() + 1));
        if (auto* v = qobject_cast<QAbstractItemView*>(w)) return a_la_table(v);
        a_la_souris(w);
    }

    void a_la_saisie(QLineEdit* b) {
        static const QStringList textes = {
            "0",        "1",           "-1",         "0,5",     "12.5", "90",  "180",   "1e-50", "1e15",
            "3.65E+17", "-273.15",     "nan",        "inf",     "",     "abc", "2,5,5", "7000",  "42164",
            "98.2",     "99999999999", "15/06/2025", "0006703", "1e9",  "100", "20",    "0.001"};
        const QString t = tire_dans(textes);
        if (!b->isReadOnly()) {
            b->setFocus();
            b->selectAll();
            QTest::keyClicks(b, t);
        }
        const Qt::Key fins[] = {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Escape};
        const int fin = tire(4);
        if (fin < 3 && QPointer<QLineEdit>(b)) QTest::keyClick(b, fins[fin]);
    }

    void a_la_table(QAbstractItemView* v) {
        const QModelIndex i = v->model() ? v->model()->index(tire(v->model()->rowCount()), 0) : QModelIndex();
        const QPointer<QAbstractItemView> vivante = v;
        const QPoint ou = i.isValid() ? v->visualRect(i).center() : QPoint(5, 5);
        QTest::mouseClick(v->viewport(), Qt::LeftButton, {}, ou);
        if (vivante && tire(3) == 0) QTest::mouseDClick(v->viewport(), Qt::LeftButton, {}, ou);
        if (vivante && tire(3) == 0) QTest::keyClick(v, tire(2) ? Qt::Key_Down : Qt::Key_Delete);
    }

    void a_la_souris(QWidget* w) {
        const QRect r = w->visibleRegion().boundingRect();
        const QPoint p(r.left() + tire(r.width()), r.top() + tire(r.height()));
        const QPointer<QWidget> vivant = w;
        const int sorte = tire(10);
        // What a click on a button opens is answered before the next one.
        if (qobject_cast<QAbstractButton*>(w)) return QTest::mouseClick(w, Qt::LeftButton, {}, p);
        if (sorte == 0) return roule(w, p);
        if (sorte == 1) return (void)QTest::mouseDClick(w, Qt::LeftButton, {}, p);
        if (sorte == 2) {
            QContextMenuEvent e(QContextMenuEvent::Mouse, p, w->mapToGlobal(p));
            return (void)QApplication::sendEvent(w, &e);
        }
        if (sorte > 4 || qobject_cast<QAbstractButton*>(w))
            return QTest::mouseClick(w, Qt::LeftButton, {}, p);
        QTest::mousePress(w, Qt::LeftButton, {}, p);
        if (vivant) QTest::mouseMove(w, p + QPoint(tire(200) - 100, tire(200) - 100));
        if (vivant) QTest::mouseRelease(w, Qt::LeftButton, {}, p + QPoint(5, 5));
    }

    static void roule(QWidget* w, QPoint p) {
        QWheelEvent e(p, w->mapToGlobal(p), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(w, &e);
    }

    std::mt19937 alea_{static_cast<unsigned>(reglage("KESTREL_GRAINE", 20))};
    const bool bavard_ = qEnvironmentVariableIsSet("KESTREL_BAVARD");
    QPointer<QAction> choisie_; ///< in a menu that is closing
    QStringList fichiers_;
    std::unique_ptr<frmFirst> premiere_;
    menu* m_ = nullptr;
    veilleur veilleur_;
    int reste_ = 0, dedans_ = 0;
    bool parti_ = false;

protected:
    int departs_ = 0;
};

} // namespace

TEST_F(marche, a_thousand_gestures_end_nothing) {
    marche_de(reglage("KESTREL_GESTES", 1000));
    const std::string tenu = texte_etude(s);
    etude relue;
    std::string raison;
    ASSERT_TRUE(lit_texte_etude(tenu, relue, raison, lecture::toute_valeur)) << raison;
    EXPECT_EQ(texte_etude(relue), tenu);
    RecordProperty("departs", departs_);
}
