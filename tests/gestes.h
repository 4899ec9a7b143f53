/// What a person does with the program's windows: find a window or a control by its name, type, click,
/// choose.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

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
T* controle(const QWidget* fenetre, const char* nom) {
    T* c = fenetre->findChild<T*>(nom);
    EXPECT_NE(c, nullptr) << nom;
    return c;
}

/// Types into a box and leaves it.
inline void tape(const QWidget* fenetre, const char* nom, const QString& texte, Qt::Key fin = Qt::Key_Tab) {
    auto* b = controle<QLineEdit>(fenetre, nom);
    if (!b->window()->isActiveWindow()) {
        b->window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(b->window()));
    }
    EXPECT_TRUE(b->isVisible() && b->isEnabled()) << nom;
    b->setFocus();
    b->selectAll();
    QTest::keyClicks(b, texte);
    QTest::keyClick(b, fin);
}

/// A click where a hand would put it: on the mark of a check box, else in the middle.
inline void clique(const QWidget* fenetre, const char* nom) {
    auto* c = controle<QWidget>(fenetre, nom);
    const bool marque = qobject_cast<QCheckBox*>(c) || qobject_cast<QRadioButton*>(c);
    QTest::mouseClick(c, Qt::LeftButton, {}, marque ? QPoint(8, c->height() / 2) : QPoint());
}

/// Answers the next question with a button.
inline void repondra(QMessageBox::StandardButton b) {
    QTimer::singleShot(0, [b] {
        auto* boite = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(boite, nullptr);
        boite->button(b)->click();
    });
}

} // namespace gestes
