#include "widgets/boite_nombre.h"

#include "widgets/conduite.h"
#include "widgets/style.h"

boite_nombre::boite_nombre(int caracteres, QWidget* parent) : QLineEdit(parent) {
    style::boite_nombre(this, caracteres);
    connect(this, &QLineEdit::editingFinished, this, &boite_nombre::valide);
}

void boite_nombre::montre() {
    montre_ = texte_stocke();
    setText(montre_);
    setCursorPosition(0);
}

void boite_nombre::valide() {
    if (en_cours_ || !touchee(this)) return;
    en_cours_ = true; // the message of a refused text takes the focus and gives it back
    const double avant = stocke();
    const bool pris = prend();
    en_cours_ = false;
    if (!pris) return;
    montre();
    if (stocke() != avant) emit change();
}
