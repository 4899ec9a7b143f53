#include "widgets/conduite.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>

#include "widgets/acces.h"

namespace {

constexpr const char* texte_avant = "kestrel_texte_avant";
constexpr const char* avance = "kestrel_entree_avance";

/// A control that the wheel would change; the scroll bars of scrolled areas are none.
bool change_par_molette(const QWidget* w) {
    if (qobject_cast<const QScrollBar*>(w))
        return !qobject_cast<const QAbstractScrollArea*>(w->parentWidget()->parentWidget());
    return qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractSlider*>(w) ||
           qobject_cast<const QAbstractSpinBox*>(w);
}

/// A box of a window; the boxes of dialogs and of tables keep the desktop's way.
bool boite_de_fenetre(const QLineEdit* b) {
    if (!b || qobject_cast<const QDialog*>(b->window())) return false;
    for (const QWidget* p = b->parentWidget(); p; p = p->parentWidget())
        if (qobject_cast<const QAbstractItemView*>(p)) return false;
    return true;
}

void montre_en_defilant(QWidget* w) {
    for (QWidget* p = w->parentWidget(); p; p = p->parentWidget())
        if (auto* zone = qobject_cast<QScrollArea*>(p)) zone->ensureWidgetVisible(w);
}

bool est_entree(const QEvent* e) {
    const auto* k = static_cast<const QKeyEvent*>(e);
    return (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) &&
           !(k->modifiers() & ~Qt::KeypadModifier);
}

class conduite : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* o, QEvent* e) override {
        if (!o->isWidgetType()) return false;
        auto* w = static_cast<QWidget*>(o);
        switch (e->type()) {
        case QEvent::Show: nomme(w); return false;
        case QEvent::Polish:
            // Tab leaves a table; arrows move within it.
            if (auto* vue = qobject_cast<QAbstractItemView*>(w)) vue->setTabKeyNavigation(false);
            // The wheel must not bring the focus along.
            if (w->focusPolicy() == Qt::WheelFocus && change_par_molette(w))
                w->setFocusPolicy(Qt::StrongFocus);
            return false;
        case QEvent::Wheel:
            if (!change_par_molette(w) || w->hasFocus()) return false;
            e->ignore(); // to what scrolls around it
            return true;
        case QEvent::FocusIn:
            // Tab may come from outside of the area that scrolls.
            if (const auto r = static_cast<QFocusEvent*>(e)->reason();
                r == Qt::TabFocusReason || r == Qt::BacktabFocusReason)
                montre_en_defilant(w);
            retient(qobject_cast<QLineEdit*>(w));
            return false;
        case QEvent::MouseButtonPress:
        case QEvent::ContextMenu:
        case QEvent::InputMethod:
        case QEvent::DragEnter: retient(qobject_cast<QLineEdit*>(w)); return false;
        case QEvent::KeyPress: return touche(w, e);
        case QEvent::PaletteChange: recolore_liens(qobject_cast<QLabel*>(w)); return false;
        default: return false;
        }
    }

private:
    /// A link has the colour of the palette in which its text was set.
    static void recolore_liens(QLabel* l) {
        if (!l || !l->text().contains("<a ")) return;
        const QString texte = l->text();
        l->clear(); // the same text again is not read again
        l->setText(texte);
    }
    static void retient(QLineEdit* b) {
        if (b && !b->isModified()) b->setProperty(texte_avant, b->text());
    }
    static bool touche(QWidget* w, QEvent* e) {
        if (auto* b = qobject_cast<QLineEdit*>(w)) {
            retient(b);
            if (static_cast<QKeyEvent*>(e)->key() != Qt::Key_Escape || !b->isModified() ||
                !boite_de_fenetre(b))
                return false;
            b->setText(b->property(texte_avant).toString());
            b->selectAll();
            return true;
        }
        const bool sert = qobject_cast<QRadioButton*>(w) || qobject_cast<QCheckBox*>(w) ||
                          qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractSlider*>(w) ||
                          qobject_cast<QAbstractItemView*>(w);
        if (!sert || !est_entree(e) || !w->window()->property(avance).toBool()) return false;
        QKeyEvent suivant(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &suivant);
        return true;
    }
};

void montre_pages(QWidget* controle) {
    for (QWidget *enfant = controle, *p = controle->parentWidget(); p; enfant = p, p = p->parentWidget()) {
        if (auto* pile = qobject_cast<QStackedWidget*>(p)) {
            if (auto* onglets = qobject_cast<QTabWidget*>(p->parentWidget()))
                onglets->setCurrentWidget(enfant);
            else
                pile->setCurrentWidget(enfant);
        }
        if (auto* zone = qobject_cast<QScrollArea*>(p)) zone->ensureWidgetVisible(controle);
    }
}

} // namespace

void installe_conduite(QApplication& app) { app.installEventFilter(new conduite(&app)); }

void entree_avance(QWidget* fenetre) { fenetre->setProperty(avance, true); }

bool touchee(const QLineEdit* boite) { return boite->isModified(); }

void ramene(QWidget* controle) {
    const auto prend = [controle] {
        controle->setFocus(Qt::OtherFocusReason);
        if (auto* b = qobject_cast<QLineEdit*>(controle)) b->selectAll();
    };
    const bool la = controle->isVisible() && controle->window()->isActiveWindow();
    if (la) prend();
    // A page that is being left hides its controls only now, and its tabs take no order before that.
    const auto revient = [controle, la, prend] {
        if (la && controle->isVisible()) return;
        montre_pages(controle);
        QWidget* f = controle->window();
        if (f->isVisible() && !f->isActiveWindow() && !QApplication::activeModalWidget()) {
            f->raise();
            f->activateWindow();
        }
        prend();
    };
    QMetaObject::invokeMethod(controle, revient, Qt::QueuedConnection);
}
