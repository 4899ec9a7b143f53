#include "widgets/acces.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTextEdit>

namespace {

constexpr const char* propriete = "champ";

/// Words of a label or tooltip as a name: one sentence, without mnemonic, unit, colon.
QString en_nom(QString t) {
    static const QRegularExpression balises("<[^>]*>"), fin("\n| \\(|\\. |\\.$| ; | ?:( |$)");
    t.remove(balises).remove('&');
    return t.section(fin, 0, 0).trimmed();
}

bool attend_un_nom(const QWidget* w) {
    if (const auto* b = qobject_cast<const QAbstractButton*>(w)) return b->text().isEmpty();
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QComboBox*>(w) ||
           qobject_cast<const QAbstractSpinBox*>(w) || qobject_cast<const QAbstractSlider*>(w) ||
           qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QProgressBar*>(w) ||
           qobject_cast<const QTextEdit*>(w);
}

QString indice_de(const QWidget* w) {
    const auto* b = qobject_cast<const QLineEdit*>(w);
    return b ? b->placeholderText() : QString();
}

} // namespace

void lie_champ(QWidget* controle, const std::string& chemin, const std::string& titre) {
    controle->setProperty(propriete, QString::fromStdString(chemin));
    if (qobject_cast<QAbstractButton*>(controle)) return;
    QString nom = QString::fromStdString(titre);
    if (!nom.isEmpty()) nom[0] = nom[0].toUpper();
    controle->setAccessibleName(nom);
}

QString champ_du_controle(const QWidget* controle) {
    for (const QWidget* w = controle; w; w = w->isWindow() ? nullptr : w->parentWidget())
        if (const QVariant chemin = w->property(propriete); chemin.isValid()) return chemin.toString();
    return {};
}

QWidget* controle_du_champ(const QWidget* fenetre, const QString& chemin) {
    const QString champ = chemin.section('[', 0, 0) + '[';
    QWidget *trouve = nullptr, *voisin = nullptr;
    for (QWidget* w : fenetre->findChildren<QWidget*>()) {
        const QVariant lie = w->property(propriete);
        if (!lie.isValid()) continue;
        const auto* bouton = qobject_cast<const QAbstractButton*>(w);
        const bool sert = w->isEnabled() && (!bouton || !bouton->autoExclusive() || bouton->isChecked());
        if (lie.toString() == chemin) {
            if (sert) return w;
            if (!trouve) trouve = w;
        } else if (!voisin && sert && lie.toString().startsWith(champ)) {
            voisin = w;
        }
    }
    return trouve ? trouve : voisin;
}

QWidget* amene_au_champ(QWidget* fenetre, const QString& chemin) {
    QWidget* trouve = controle_du_champ(fenetre, chemin);
    const auto la = [&](const QWidget* w) { return w && w->property(propriete).toString() == chemin; };
    if (!trouve || la(trouve)) return trouve;
    for (auto* liste : fenetre->findChildren<QListWidget*>()) {
        // A list that edits a number itself is not touched.
        if (!liste->isVisible() || !liste->isEnabled() || !champ_du_controle(liste).isEmpty()) continue;
        const int avant = liste->currentRow();
        for (int i = 0; i < liste->count(); ++i) {
            liste->setCurrentRow(i);
            if (QWidget* w = controle_du_champ(fenetre, chemin); la(w)) return w;
        }
        liste->setCurrentRow(avant);
    }
    return trouve;
}

void nomme(QWidget* w) {
    // The toolkit describes lists and tables by this alone, the others by their tooltip too.
    if (qobject_cast<QAbstractItemView*>(w) && w->accessibleDescription().isEmpty())
        w->setAccessibleDescription(w->toolTip());
    if (!attend_un_nom(w) || !w->accessibleName().isEmpty() || w->objectName().startsWith("qt_")) return;
    QString nom;
    for (const QLabel* l : w->window()->findChildren<QLabel*>())
        if (l->buddy() == w) nom = en_nom(l->text());
    if (nom.isEmpty()) nom = en_nom(w->toolTip());
    if (nom.isEmpty()) nom = en_nom(indice_de(w));
    if (!nom.isEmpty()) w->setAccessibleName(nom);
}
