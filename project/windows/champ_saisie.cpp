#include "project/windows/champ_saisie.h"

#include <QGridLayout>
#include <QLabel>

#include <charconv>
#include <cmath>
#include <utility>

#include "project/etude_champs.h"
#include "shell/formats.h"
#include "widgets/acces.h"
#include "widgets/conduite.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

bool entier(const champ& c) {
    return c.type == type_champ::i16 || c.type == type_champ::i32 || c.type == type_champ::u8;
}

QString borne_texte(double x) {
    return x == std::floor(x) && std::fabs(x) < 1e9 ? QString::number(x, 'f', 0)
                                                    : QString::fromStdString(format_court(x));
}

} // namespace

QString texte_court(float x) {
    char tampon[48];
    const float m = std::fabs(x);
    const bool fixe = m == 0 || (m >= 1e-5f && m < 1e7f);
    const auto fin = std::to_chars(tampon, tampon + sizeof tampon, m == 0 ? 0.f : x,
                                   fixe ? std::chars_format::fixed : std::chars_format::general);
    return QString::fromLatin1(tampon, fin.ptr - tampon);
}

double decimale(float x) { return texte_court(x).toDouble(); }

champ_saisie::champ_saisie(power_record& p, const char* nom_champ, int element, QWidget* parent)
    : QLineEdit(parent), p_(p), champ_(champ_de(nom_champ)), element_(element) {
    style::boite_nombre(this);
    setToolTip(aide());
    lie_champ(this, element_de(champ_, element_));
    connect(this, &QLineEdit::editingFinished, this, &champ_saisie::quitte);
    relit();
}

void champ_saisie::choisit_element(int element) {
    element_ = element;
    lie_champ(this, element_de(champ_, element_));
    relit();
}

double champ_saisie::stocke() const {
    const double x = valeur(p_, champ_, element_);
    return champ_.type == type_champ::f32 ? decimale(static_cast<float>(x)) : x;
}

void champ_saisie::bornes_mobiles(std::function<limites()> b, const QString& aide) {
    mobiles_ = std::move(b);
    setToolTip(toolTip() + "\n" + aide);
}

bool champ_saisie::permise() const {
    const limites& b = champ_.bornes;
    const double x = stocke();
    return (b.min_inclus ? x >= b.min : x > b.min) && (b.max_inclus ? x <= b.max : x < b.max);
}

QString champ_saisie::unite() const { return QString::fromUtf8(champ_.unite); }

void champ_saisie::relit() {
    const double x = valeur(p_, champ_, element_);
    if (!image_.isEmpty())
        montre_ = QString::fromStdString(format_image(x, image_.toStdString()));
    else if (champ_.type == type_champ::f32)
        montre_ = texte_court(static_cast<float>(x));
    else if (entier(champ_))
        montre_ = QString::number(x, 'f', 0); // never a power of ten
    else
        montre_ = QString::fromStdString(format_court(x));
    setText(montre_);
    setCursorPosition(0);
}

QString champ_saisie::aide() const {
    QString t = QString::fromUtf8(champ_.sens);
    if (!unite().isEmpty()) t += QString(" (%1)").arg(unite());
    const limites& b = champ_.bornes;
    const bool bas = std::isfinite(b.min), haut = std::isfinite(b.max);
    if (bas) t += QString("\n%1 %2").arg(b.min_inclus ? "Minimum :" : "Supérieur à", borne_texte(b.min));
    if (haut)
        t += QString("%1%2 %3").arg(bas ? " ; " : "\n",
                                    b.max_inclus ? (bas ? "maximum :" : "Maximum :")
                                                 : (bas ? "inférieur à" : "Inférieur à"),
                                    borne_texte(b.max));
    if (entier(champ_)) t += "\nNombre entier";
    return t;
}

bool champ_saisie::lit(double& x) {
    if (entier(champ_)) {
        int n = 0;
        if (!verif_entier(this, text(), montre_, n)) return false;
        x = n;
        // Beyond a byte is no number of the type: refused in the words for an empty text.
        return champ_.type != type_champ::u8 || n <= 255 || verif_entier(this, {}, montre_, n);
    }
    if (champ_.type != type_champ::f32) return verif_double(this, text(), montre_, x);
    // As it is stored, so that 1e-50 is 0; as the decimal that stands for it, so that 0.05 is not above 0.05.
    float simple = 0;
    if (!verif_simple(this, text(), montre_, simple)) return false;
    x = decimale(simple);
    return true;
}

bool champ_saisie::dans_les_bornes(double x) {
    limites b = champ_.bornes, mobiles = mobiles_ ? mobiles_() : limites{};
    if (std::isinf(b.min)) {
        std::swap(b.min, mobiles.min);
        std::swap(b.min_inclus, mobiles.min_inclus);
    }
    if (std::isinf(b.max)) {
        std::swap(b.max, mobiles.max);
        std::swap(b.max_inclus, mobiles.max_inclus);
    }
    return verifie(b, x) && verifie(mobiles, x);
}

bool champ_saisie::verifie(const limites& b, double x) {
    const bool bas = std::isfinite(b.min), haut = std::isfinite(b.max);
    if (bas && haut) return verif_bornes(this, x, b.min, b.max, b.min_inclus, b.max_inclus, montre_);
    if (haut) return verif_max(this, x, b.max, b.max_inclus, montre_);
    if (bas) return verif_min(this, x, b.min, b.min_inclus, montre_);
    return true;
}

void champ_saisie::quitte() {
    // The message box of a refusal takes the focus and comes back here.
    if (en_cours_ || !touchee(this)) return;
    en_cours_ = true;
    double x = 0;
    const bool accepte = lit(x) && dans_les_bornes(x);
    if (accepte) {
        change(p_, champ_, x, element_);
        if (apres_) apres_();
        relit();
        emit valeur_stockee();
    }
    en_cours_ = false;
}

QLabel* pose_champ(QGridLayout* grille, int ligne, int colonne, const QString& libelle, champ_saisie* champ) {
    auto* l = new QLabel(libelle);
    l->setBuddy(champ);
    l->setToolTip(champ->toolTip());
    grille->addWidget(l, ligne, colonne, Qt::AlignRight | Qt::AlignVCenter);
    grille->addWidget(champ, ligne, colonne + 1);
    // Some captions hold their unit already.
    if (!libelle.contains('(' + champ->unite() + ')'))
        grille->addWidget(new QLabel(champ->unite()), ligne, colonne + 2, Qt::AlignLeft | Qt::AlignVCenter);
    return l;
}
