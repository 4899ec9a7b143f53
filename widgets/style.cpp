#include "widgets/style.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QLabel>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QScreen>
#include <QStyleFactory>
#include <QStyleOption>
#include <QSvgRenderer>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/conduite.h"

// The resources stand in a static library: they are registered by hand, outside of any namespace.
static void enregistre_ressources() { Q_INIT_RESOURCE(ressources); }

namespace style {

QColor melange(const QColor& a, const QColor& b, double part_a) {
    const auto m = [part_a](int x, int y) { return qRound(x * part_a + y * (1.0 - part_a)); };
    return {m(a.red(), b.red()), m(a.green(), b.green()), m(a.blue(), b.blue())};
}

namespace {

struct paire {
    QRgb clair, sombre;
};

// In the order of `role`, up to axe_z, then the alert colour.
constexpr std::array<paire, 11> couleurs = {{
    {0xffb86e00, 0xffffb340}, // generateur
    {0xff1f6fc4, 0xff5aa9ff}, // batterie
    {0xff2f8a3e, 0xff6fce7a}, // charge_utile
    {0xffa0432a, 0xffe08468}, // perte
    {0xff878d96, 0xff9aa0ab}, // eclipse
    {0xffdf9f00, 0xffffd24a}, // soleil
    {0xff2a7f9e, 0xff5cc0e0}, // terre
    {0xffc62828, 0xffff6b6b}, // axe_x
    {0xff2e7d32, 0xff66d46c}, // axe_y
    {0xff1a56b0, 0xff6aa2ff}, // axe_z
    {0xffb3261e, 0xffff8a80}, // alerte
}};

constexpr std::array<paire, 8> courbes = {{
    {0xff0072b2, 0xff56b4f0},
    {0xffd55e00, 0xffff8f4a},
    {0xff009e73, 0xff3fd6aa},
    {0xffa3559c, 0xffdd8fd6},
    {0xff7a5230, 0xffc79a70},
    {0xff2b9fc9, 0xff7fd8f5},
    {0xff7f7f00, 0xffd8d45a},
    {0xff5f6670, 0xffb9c0ca},
}};

QColor choisit(const paire& p, bool fonce) { return QColor::fromRgb(fonce ? p.sombre : p.clair); }

constexpr double contraste_lisible = 4.55; ///< 4.5:1, and what rounding to bytes may take

double luminance(const QColor& c) {
    const auto l = [](double x) { return x <= 0.03928 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4); };
    return 0.2126 * l(c.redF()) + 0.7152 * l(c.greenF()) + 0.0722 * l(c.blueF());
}

/// The contrast of two opaque colours, 1 to 21 (Web Content Accessibility Guidelines 2.1).
double contraste(const QColor& a, const QColor& b) {
    const double x = luminance(a), y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

/// `c`, mixed with the strong colour as little as it takes to be read on all the grounds.
QColor lisible_sur(const QColor& c, const QColor& forte, std::initializer_list<QColor> fonds) {
    constexpr int crans = 40;
    for (int i = 0; i < crans; ++i) {
        const QColor essai = melange(forte, c, double(i) / crans);
        if (std::all_of(fonds.begin(), fonds.end(),
                        [&](const QColor& f) { return contraste(essai, f) >= contraste_lisible; }))
            return essai;
    }
    return forte;
}

/// Draws a drawing of the program in the colours of the palette in force at that moment, so that icons follow
/// a change of palette. In the files, "currentColor" stands for the text colour and the light value of a role
/// for that role.
class moteur_icone : public QIconEngine {
public:
    explicit moteur_icone(QString chemin) : chemin_(std::move(chemin)) {}

    void paint(QPainter* p, const QRect& r, QIcon::Mode mode, QIcon::State) override {
        const QPalette pal = QApplication::palette();
        const QColor trait =
            pal.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        const bool fonce = pal.color(QPalette::Window).lightness() < 128;
        QSvgRenderer dessin(recolore(trait, mode == QIcon::Selected ? trait.lightness() > 128 : fonce));
        dessin.setAspectRatioMode(Qt::KeepAspectRatio);
        p->save();
        p->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled) p->setOpacity(p->opacity() * 0.38);
        dessin.render(p, r);
        p->restore();
    }

    QPixmap pixmap(const QSize& taille, QIcon::Mode mode, QIcon::State etat) override {
        QPixmap image(taille);
        image.fill(Qt::transparent);
        QPainter p(&image);
        paint(&p, image.rect(), mode, etat);
        return image;
    }

    QSize actualSize(const QSize& taille, QIcon::Mode, QIcon::State) override { return taille; }
    QIconEngine* clone() const override { return new moteur_icone(chemin_); }
    QString key() const override { return "kestrel"; }

private:
    QByteArray recolore(const QColor& trait, bool fonce) {
        if (source_.isEmpty()) {
            QFile f(chemin_);
            if (f.open(QIODevice::ReadOnly)) source_ = f.readAll();
        }
        QByteArray t = source_;
        t.replace("currentColor", trait.name().toLatin1());
        if (fonce)
            for (const paire& c : couleurs)
                t.replace(QColor::fromRgb(c.clair).name().toLatin1(),
                          QColor::fromRgb(c.sombre).name().toLatin1());
        return t;
    }

    QString chemin_;
    QByteArray source_;
};

/// Fusion where it cannot be read: values in disabled boxes, and the outline of check marks in the dark.
class fusion_lisible : public QProxyStyle {
public:
    fusion_lisible() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    void polish(QPalette& p) override {
        QProxyStyle::polish(p);
        lisible(p);
    }
    void polish(QWidget* w) override { QProxyStyle::polish(w); }
    void polish(QApplication* a) override { QProxyStyle::polish(a); }

    void drawPrimitive(PrimitiveElement e, const QStyleOption* o, QPainter* p,
                       const QWidget* w) const override {
        QProxyStyle::drawPrimitive(e, o, p, w);
        if (e != PE_IndicatorCheckBox && e != PE_IndicatorRadioButton) return;
        const QPalette& pal = o->palette;
        p->save();
        p->setRenderHint(QPainter::Antialiasing);
        p->setBrush(Qt::NoBrush);
        p->setPen(melange(pal.color(QPalette::WindowText), pal.color(QPalette::Window), part_contour));
        const QRectF r = QRectF(o->rect).adjusted(.5, .5, -.5, -.5);
        if (e == PE_IndicatorCheckBox)
            p->drawRoundedRect(r.adjusted(0, 0, -1, -1), 1.5, 1.5);
        else
            p->drawEllipse(r.adjusted(.5, .5, -.5, -.5));
        p->restore();
    }

private:
    static constexpr double part_contour = .6;
};

} // namespace

void lisible(QPalette& p) {
    // 4.5:1 and more on the light and the dark palettes of the desktops; the ground tells that a box is not
    // to be typed in.
    constexpr double part_encre = .72;
    const auto active = [&p](QPalette::ColorRole r) { return p.color(QPalette::Active, r); };
    const QColor fond = active(QPalette::Window), texte = active(QPalette::WindowText);
    const QColor encre =
        lisible_sur(melange(texte, fond, part_encre), texte, {fond, active(QPalette::Button)});
    for (const QPalette::ColorRole r : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, r, encre);
    p.setColor(QPalette::Disabled, QPalette::Base, fond);
    p.setColor(QPalette::Disabled, QPalette::AlternateBase, fond);
    // Hints, links, and what is chosen.
    const std::initializer_list<QColor> fonds = {fond, active(QPalette::Base),
                                                 active(QPalette::AlternateBase)};
    p.setColor(QPalette::PlaceholderText,
               lisible_sur(melange(texte, active(QPalette::Base), .5), texte, fonds));
    for (const QPalette::ColorRole r : {QPalette::Link, QPalette::LinkVisited})
        p.setColor(r, lisible_sur(active(r), texte, fonds));
    const QColor choisi = active(QPalette::HighlightedText);
    const QColor dessous = choisi.lightness() > 128 ? Qt::black : Qt::white;
    for (const QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        p.setColor(g, QPalette::HighlightedText, choisi);
        p.setColor(g, QPalette::Highlight, lisible_sur(p.color(g, QPalette::Highlight), dessous, {choisi}));
    }
}

void applique(QApplication& app) {
    enregistre_ressources();
    app.setStyle(new fusion_lisible);
    installe_conduite(app);
    // Dates and calendars are French; numbers are formatted by the program itself, with a point.
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    auto* traduction = new QTranslator(&app);
    if (traduction->load("qtbase_fr", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        app.installTranslator(traduction);
    else
        delete traduction;
    app.setWindowIcon(icone("kestrel"));
}

bool sombre() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

QColor couleur(role r) {
    const QPalette pal = QApplication::palette();
    const QColor texte = pal.color(QPalette::WindowText);
    switch (r) {
    case role::trait: return texte;
    case role::discret: return en_texte(melange(texte, pal.color(QPalette::Window), 0.6));
    case role::alerte: return choisit(couleurs.back(), sombre());
    default: return choisit(couleurs[static_cast<size_t>(r)], sombre());
    }
}

QColor en_texte(const QColor& c) {
    const QPalette p = QApplication::palette();
    return lisible_sur(
        c, p.color(QPalette::WindowText),
        {p.color(QPalette::Window), p.color(QPalette::Base), p.color(QPalette::AlternateBase)});
}

QColor couleur_courbe(int n) {
    return choisit(courbes[static_cast<size_t>(std::abs(n)) % courbes.size()], sombre());
}

QColor accorde(const QColor& c, bool fonce) {
    for (const auto* p = couleurs.begin(); p != couleurs.end(); ++p)
        if (c.rgb() == p->clair || c.rgb() == p->sombre) return choisit(*p, fonce);
    for (const auto* p = courbes.begin(); p != courbes.end(); ++p)
        if (c.rgb() == p->clair || c.rgb() == p->sombre) return choisit(*p, fonce);
    return c;
}

int espace(int n) {
    const QScreen* ecran = QGuiApplication::primaryScreen();
    return qRound(4.0 * n * (ecran ? ecran->logicalDotsPerInch() / 96.0 : 1.0));
}

QFont police_nombres(const QWidget* w) {
    // The interface fonts in use have figures of one width; kerning would break the columns.
    QFont f = w ? w->font() : QApplication::font();
    f.setKerning(false);
    return f;
}

QIcon icone(const QString& nom) {
    const QString chemin = ":/icones/" + nom + ".svg";
    return QFile::exists(chemin) ? QIcon(new moteur_icone(chemin)) : QIcon();
}

void montre_calcule(QLabel* l) {
    l->setFont(police_nombres(l));
    l->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    l->setAutoFillBackground(true);
    l->setBackgroundRole(QPalette::AlternateBase); // neither the white of an entry nor the window itself
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setMargin(espace() / 2);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

QPushButton* bouton(const QString& nom, const QString& texte, const QString& aide) {
    auto* b = new QPushButton(texte);
    b->setObjectName(nom);
    b->setToolTip(aide);
    b->setAutoDefault(false);
    return b;
}

void bouton_pied(QPushButton* b) {
    b->setMinimumWidth(espace(24));
    b->setAutoDefault(false);
}

void marque(QLineEdit* e, bool fautive) {
    QPalette p;
    constexpr double part = .3;
    for (const QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive})
        if (fautive)
            p.setColor(g, QPalette::Base,
                       melange(couleur(role::alerte), QApplication::palette().color(QPalette::Base), part));
    e->setPalette(p);
}

void boite_nombre(QLineEdit* e, int caracteres) {
    e->setFont(police_nombres(e));
    e->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const int largeur = QFontMetrics(e->font()).horizontalAdvance('0') * caracteres + espace(4);
    e->setMinimumWidth(largeur);
    e->setMaximumWidth(largeur + espace(6));
}

} // namespace style
