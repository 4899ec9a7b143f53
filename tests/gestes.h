/// What a person does with the program's windows: find a window or a control by its name, type, click,
/// choose, answer; and the fixtures of the tests that do so.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

#include "shell/session.h"
#include "widgets/verifications.h"

namespace gestes {

/// A window in sight, by its object name.
template <class T = QWidget>
T* fenetre_ouverte(const char* nom) {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String(nom) && w->isVisible()) return qobject_cast<T*>(w);
    ADD_FAILURE() << "no window " << nom;
    return nullptr;
}

template <class T = QWidget>
T* controle(const QWidget* fenetre, const QString& nom) {
    T* c = fenetre->findChild<T*>(nom);
    EXPECT_NE(c, nullptr) << nom.toStdString();
    return c;
}

/// Brings the page of a control forward, as a click on its tab does.
inline void montre_page_de(QWidget* c) {
    for (QWidget* p = c->parentWidget(); p; p = p->parentWidget())
        if (auto* onglets = qobject_cast<QTabWidget*>(p))
            for (int i = 0; i < onglets->count(); ++i)
                if (onglets->widget(i)->isAncestorOf(c)) onglets->setCurrentIndex(i);
}

/// Types into a box and leaves it.
inline void tape(const QWidget* fenetre, const QString& nom, const QString& texte,
                 Qt::Key fin = Qt::Key_Tab) {
    auto* b = controle<QLineEdit>(fenetre, nom);
    if (!b->window()->isActiveWindow()) {
        b->window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(b->window()));
    }
    EXPECT_TRUE(b->isVisible() && b->isEnabled()) << nom.toStdString();
    b->setFocus();
    b->selectAll();
    QTest::keyClicks(b, texte);
    QTest::keyClick(b, fin);
}

/// A click where a hand would put it: on the mark of a check box, else in the middle.
inline void clique(const QWidget* fenetre, const QString& nom) {
    auto* c = controle<QWidget>(fenetre, nom);
    const bool marque = qobject_cast<QCheckBox*>(c) || qobject_cast<QRadioButton*>(c);
    QTest::mouseClick(c, Qt::LeftButton, {}, marque ? QPoint(8, c->height() / 2) : QPoint());
}

/// A click on an entry of a list.
inline void clique_ligne(QListWidget* liste, QListWidgetItem* ligne) {
    liste->scrollToItem(ligne);
    QTest::mouseClick(liste->viewport(), Qt::LeftButton, {}, liste->visualItemRect(ligne).center());
}

/// Answers the next question with a button.
inline void repondra(QMessageBox::StandardButton b) {
    QTimer::singleShot(0, [b] {
        auto* boite = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(boite, nullptr);
        boite->button(b)->click();
    });
}

/// The words of the bar above the window's content; empty: no bar in sight.
inline QString bandeau(const QWidget* fenetre) {
    auto* l = controle<QLabel>(fenetre, "lab_bandeau");
    return l->isHidden() ? QString() : l->text();
}

inline QString label(const QWidget* fenetre, const QString& nom) {
    return controle<QLabel>(fenetre, nom)->text();
}
inline QByteArray contenu(const QString& chemin) {
    QFile f(chemin);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("cannot be read");
}
inline void ecrit(const QString& chemin, const QByteArray& octets) {
    QFile f(chemin);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(octets);
}

inline QStringList messages;              ///< what the program said in message boxes
inline gravite derniere = gravite::arret; ///< of the last of them

/// A session with the program's defaults, a folder of its own, and the messages kept, each answered by yes.
struct essai_fenetres : testing::Test {
    essai_fenetres() {
        messages.clear();
        remplace_repondeur([](gravite g, const QString& texte) {
            messages << texte;
            derniere = g;
            return true;
        });
        session_init(s);
        EXPECT_TRUE(dossier.isValid());
    }
    ~essai_fenetres() override { remplace_repondeur(nullptr); }

    QTemporaryDir dossier;
    session s;
};

/// One window under test, with the gestures on its controls.
template <class F>
struct essai_fenetre : essai_fenetres {
    void ouvre() {
        f = std::make_unique<F>(s);
        f->show();
        f->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(f.get()));
    }
    template <class T = QWidget>
    T* controle(const QString& nom) {
        return gestes::controle<T>(f.get(), nom);
    }
    void tape(const QString& nom, const QString& texte, Qt::Key fin = Qt::Key_Tab) {
        montre_page_de(controle(nom));
        gestes::tape(f.get(), nom, texte, fin);
    }
    void clique(const QString& nom) {
        montre_page_de(controle(nom));
        gestes::clique(f.get(), nom);
    }
    QString bandeau() { return gestes::bandeau(f.get()); }
    QString lu(const QString& nom) { return controle<QLineEdit>(nom)->text(); }
    QString label(const QString& nom) { return gestes::label(f.get(), nom); }

    std::unique_ptr<F> f;
};

} // namespace gestes
