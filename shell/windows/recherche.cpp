#include "shell/windows/recherche.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "widgets/style.h"
#include "widgets/textes.h"

recherche::recherche(const QList<lieu>& lieux, QWidget* parent)
    : QDialog(parent), lieux_(lieux), txt_recherche_(new QLineEdit), lst_recherche_(new QListWidget) {
    setObjectName("recherche");
    setWindowTitle("Chercher");
    auto* pile = new QVBoxLayout(this);
    txt_recherche_->setObjectName("txt_recherche");
    txt_recherche_->setAccessibleName("Mots à chercher");
    txt_recherche_->setPlaceholderText("Action, page, réglage, unité ou variable…");
    txt_recherche_->setClearButtonEnabled(true);
    txt_recherche_->installEventFilter(this);
    lst_recherche_->setObjectName("lst_recherche");
    lst_recherche_->setAccessibleName("Ce qui a été trouvé");
    lst_recherche_->setUniformItemSizes(true);
    pile->addWidget(txt_recherche_);
    pile->addWidget(lst_recherche_, 1);
    pile->addWidget(new QLabel("↑ ↓ pour choisir, Entrée pour y aller, Échap pour fermer"));
    resize(style::espace(130), style::espace(90));
    for (const lieu& l : lieux_) cles_ << sans_accents(l.titre + ' ' + l.detail + ' ' + l.mots);
    connect(txt_recherche_, &QLineEdit::textChanged, this, &recherche::filtre);
    connect(lst_recherche_, &QListWidget::itemActivated, this, &recherche::prend);
    connect(lst_recherche_, &QListWidget::itemClicked, this, &recherche::prend);
    filtre();
    txt_recherche_->setFocus();
}

/// Places that hold every word. Those whose title begins with the text stand first, then those with it as a
/// word of its own (the field "bat_c" before "bat_cmax"), then those with the words in their title.
void recherche::filtre() {
    const QString texte = sans_accents(txt_recherche_->text().trimmed());
    const QStringList mots = texte.split(' ', Qt::SkipEmptyParts);
    QList<int> trouves;
    for (int i = 0; i < int(lieux_.size()); ++i)
        if (std::all_of(mots.begin(), mots.end(), [&](const QString& m) { return cles_[i].contains(m); }))
            trouves << i;
    const auto rang = [&](int i) {
        if (texte.isEmpty()) return 0;
        const QString titre = sans_accents(lieux_[i].titre);
        if (titre.startsWith(texte)) return 0;
        if ((' ' + cles_[i] + ' ').contains(' ' + texte + ' ')) return 1;
        return std::all_of(mots.begin(), mots.end(), [&](const QString& m) { return titre.contains(m); }) ? 2
                                                                                                          : 3;
    };
    std::stable_sort(trouves.begin(), trouves.end(), [&](int a, int b) { return rang(a) < rang(b); });
    constexpr qsizetype lignes_max = 200; // nobody reads further
    if (trouves.size() > lignes_max) trouves.resize(lignes_max);
    lst_recherche_->clear();
    for (const int i : trouves) {
        auto* ligne = new QListWidgetItem(lieux_[i].titre + "   —   " + lieux_[i].detail, lst_recherche_);
        ligne->setData(Qt::UserRole, i);
    }
    if (trouves.isEmpty()) {
        auto* ligne = new QListWidgetItem("Rien ne porte ce nom.", lst_recherche_);
        ligne->setFlags(Qt::NoItemFlags);
    }
    lst_recherche_->setCurrentRow(0);
}

void recherche::prend() {
    const QListWidgetItem* ligne = lst_recherche_->currentItem();
    if (!ligne || !ligne->data(Qt::UserRole).isValid()) return;
    choix_ = lieux_[ligne->data(Qt::UserRole).toInt()].aller;
    accept();
}

/// The keys of the list work while the text is being typed.
bool recherche::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::KeyPress) {
        auto* touche = static_cast<QKeyEvent*>(e);
        switch (touche->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown: QCoreApplication::sendEvent(lst_recherche_, e); return true;
        case Qt::Key_Return:
        case Qt::Key_Enter: prend(); return true;
        default: break;
        }
    }
    return QDialog::eventFilter(o, e);
}
