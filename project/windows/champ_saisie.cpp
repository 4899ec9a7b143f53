#include "project/windows/champ_saisie.h"

#include <QGridLayout>
#include <QLabel>

#include <charconv>
#include <cmath>
#include <utility>

#include "project/etude_champs.h"
#include "shell/formats.h"
#include "widgets/acces.h"
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
    : boite_nombre(10, parent), p_(p), champ_(champ_de(nom_champ)), element_(element) {
    setToolTip(aide());
    lie_champ(this, element_de(champ_, element_));
    montre();
}

void champ_saisie::choisit_element(int element) {
    element_ = element;
    lie_champ(this, element_de(champ_, element_));
    montre();
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

QString champ_saisie::texte_stocke() const {
    const double x = valeur(p_, champ_, element_);
    if (!image_.isEmpty()) return QString::fromStdString(format_image(x, image_.toStdString()));
    if (champ_.type == type_champ::f32) return texte_court(static_cast<float>(x));
    if (entier(champ_)) return QString::number(x, 'f', 0); // never a power of ten
    return QString::fromStdString(format_court(x));
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
        if (!verif_entier(this, text(), ancien(), n)) return false;
        x = n;
        // Beyond a byte is no number of the type: refused in the words for an empty text.
        return champ_.type != type_champ::u8 || n <= 255 || verif_entier(this, {}, ancien(), n);
    }
    if (champ_.type != type_champ::f32) return verif_double(this, text(), ancien(), x);
    // As it is stored, so that 1e-50 is 0; as the decimal that stands for it, so that 0.05 is not above 0.05.
    float simple = 0;
    if (!verif_simple(this, text(), ancien(), simple)) return false;
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
    if (bas && haut) return verif_bornes(this, x, b.min, b.max, b.min_inclus, b.max_inclus, ancien());
    if (haut) return verif_max(this, x, b.max, b.max_inclus, ancien());
    if (bas) return verif_min(this, x, b.min, b.min_inclus, ancien());
    return true;
}

bool champ_saisie::prend() {
    double x = 0;
    if (!lit(x) || !dans_les_bornes(x)) return false;
    ::change(p_, champ_, x, element_);
    if (apres_) apres_();
    return true;
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
