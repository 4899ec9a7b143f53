#include "shell/windows/guide.h"

#include <QAction>
#include <QDesktopServices>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>

#include <algorithm>

#include "shell/windows/guide_reference.h"
#include "widgets/style.h"

namespace {

struct section {
    const char* fenetre;
    const char* titre; ///< the heading's text in the guide
};

constexpr section sections[] = {
    {"menu", "Fenêtre principale"},
    {"page_carte", "Carte"},
    {"page_banc", "Banc d'attitude"},
    {"orbito_conf", "Orbite et attitude nominale"},
    {"power_conf", "Réglages du système énergie"},
    {"power_sim_all", "Simulation complète"},
    {"power_exp_pan", "Étude du générateur solaire"},
    {"power_exp_bat", "Étude d'une batterie"},
    {"power_exp_data", "Exploitation de données, énergie"},
    {"att_conf", "Configuration de l'attitude"},
    {"att_sim", "Simulation de l'attitude"},
    {"att_exp_data", "Exploitation de données, attitude"},
};

constexpr int role_position = Qt::UserRole; ///< of a heading: its place in the document

} // namespace

/// The text, with pictures no wider than the window, scaled smoothly.
class texte_guide : public QTextBrowser {
public:
    texte_guide() {
        apres_taille_.setObjectName("apres_taille");
        apres_taille_.setSingleShot(true);
        apres_taille_.setInterval(60);
        connect(&apres_taille_, &QTimer::timeout, this, [this] { retaille_images(); });
        connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
            if (!apres_taille_.isActive()) ancre_ = cursorForPosition({0, 0}).position();
        });
    }

    /// The place in the text that stands at the top, and stays there when the window changes its size.
    int ancre() const { return ancre_; }
    void montre(int position) {
        QTextCursor c(document());
        c.setPosition(position);
        verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(c).top() - style::espace(2));
        ancre_ = position;
    }

    QVariant loadResource(int type, const QUrl& nom) override {
        if (type == QTextDocument::MarkdownResource)
            return QString::fromUtf8(QTextBrowser::loadResource(type, nom).toByteArray()) + "\n\n" +
                   reference_reglages();
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, nom);
        const QUrl url = source().resolved(nom);
        if (!url.isLocalFile()) return {}; // nothing is fetched
        const QImage image(url.toLocalFile());
        return image.isNull() ? QVariant() : a_la_largeur(image);
    }

    /// Colours and spacing of what Markdown leaves plain: tables and code.
    void habille() {
        const QPalette& p = palette();
        for (QTextFrame* cadre : document()->rootFrame()->childFrames()) {
            auto* table = qobject_cast<QTextTable*>(cadre);
            if (!table) continue;
            QTextTableFormat f = table->format();
            f.setBorderCollapse(true);
            f.setBorder(1);
            f.setBorderBrush(p.mid());
            f.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            f.setCellPadding(style::espace());
            f.setCellSpacing(0);
            f.setTopMargin(style::espace());
            f.setBottomMargin(style::espace(3));
            table->setFormat(f);
        }
        QTextCursor c(document());
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
            QTextBlockFormat f = b.blockFormat();
            if (f.hasProperty(QTextFormat::BlockCodeFence)) {
                f.setBackground(p.alternateBase());
                f.setLeftMargin(style::espace(4));
                f.setNonBreakableLines(true);
            } else if (const int n = f.headingLevel(); n > 0) {
                f.setTopMargin(style::espace(n <= 2 ? 8 : 5));
                f.setBottomMargin(style::espace(2));
            } else {
                continue;
            }
            c.setPosition(b.position());
            c.setBlockFormat(f);
        }
    }

protected:
    void resizeEvent(QResizeEvent* e) override {
        if (e->oldSize().width() != e->size().width()) apres_taille_.start();
        QTextBrowser::resizeEvent(e);
    }

private:
    QImage a_la_largeur(QImage image) const {
        // A picture may stand in a list, which is indented.
        const double place =
            viewport()->width() - 2 * document()->documentMargin() - document()->indentWidth();
        const double largeur = std::min<double>(image.width(), std::max(1.0, place));
        const int points = int(largeur * devicePixelRatioF());
        if (image.width() > points) image = image.scaledToWidth(points, Qt::SmoothTransformation);
        image.setDevicePixelRatio(image.width() / largeur);
        return image;
    }

    void retaille_images() {
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next())
            for (auto i = b.begin(); !i.atEnd(); ++i) {
                const QTextImageFormat f = i.fragment().charFormat().toImageFormat();
                if (!f.isValid()) continue;
                const QUrl nom = source().resolved(QUrl(f.name())); // as the document looks for it
                document()->addResource(QTextDocument::ImageResource, nom,
                                        loadResource(QTextDocument::ImageResource, nom));
            }
        document()->markContentsDirty(0, document()->characterCount());
        montre(ancre_);
    }

    QTimer apres_taille_{this};
    int ancre_ = 0;
};

guide::guide(session& s, QWidget* parent)
    : fenetre(s, "guide", "Guide de l'utilisateur", parent), chemin_(fichier(s)), sommaire_(new QTreeWidget),
      texte_(new texte_guide), recherche_(new QLineEdit), lab_recherche_(new QLabel) {
    sommaire_->setObjectName("sommaire");
    sommaire_->setHeaderHidden(true);
    sommaire_->setToolTip("Les sections du guide");
    sommaire_->setTextElideMode(Qt::ElideRight);
    sommaire_->setIndentation(style::espace(4));
    texte_->setObjectName("txt_guide");
    texte_->setAccessibleName("Texte du guide");
    texte_->setOpenLinks(false);
    connect(texte_, &QTextBrowser::anchorClicked, this, &guide::suit_lien);
    texte_->document()->setDocumentMargin(style::espace(6));

    auto* droite = new QWidget;
    auto* colonne = new QVBoxLayout(droite);
    colonne->setContentsMargins(0, 0, 0, 0);
    colonne->setSpacing(style::espace());
    colonne->addWidget(construit_recherche());
    colonne->addWidget(texte_, 1);
    auto* partage = new QSplitter;
    partage->addWidget(sommaire_);
    partage->addWidget(droite);
    partage->setStretchFactor(1, 1);
    partage->setChildrenCollapsible(false);
    partage->setSizes({style::espace(66), style::espace(224)});
    auto* pile = new QVBoxLayout(contenu());
    pile->setContentsMargins(style::espace(2), style::espace(2), style::espace(2), style::espace(2));
    pile->addWidget(partage);
    resize(style::espace(290), style::espace(165));

    connect(sommaire_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* t) { va_a(t); });
    connect(sommaire_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* t) { va_a(t); });
    connect(texte_->verticalScrollBar(), &QScrollBar::valueChanged, this, &guide::suit_lecture);
    lit();
    texte_->setFocus();
}

QWidget* guide::construit_recherche() {
    auto* barre = new QWidget;
    auto* ligne = new QHBoxLayout(barre);
    ligne->setContentsMargins(0, 0, 0, 0);
    recherche_->setObjectName("txt_cherche");
    recherche_->setPlaceholderText("Chercher dans le guide (Ctrl+F)");
    recherche_->setToolTip("Entrée : occurrence suivante ; Maj+Entrée : précédente");
    recherche_->setClearButtonEnabled(true);
    lab_recherche_->setObjectName("lab_cherche");
    ligne->addWidget(recherche_, 1);
    const auto bouton = [&](const char* nom, Qt::ArrowType fleche, const QString& aide,
                            const QList<QKeySequence>& touches, bool en_arriere) {
        auto* b = new QToolButton;
        b->setObjectName(nom);
        b->setArrowType(fleche);
        b->setToolTip(aide);
        ligne->addWidget(b);
        auto* a = new QAction(this);
        a->setShortcuts(touches);
        addAction(a);
        connect(a, &QAction::triggered, this, [this, en_arriere] { cherche(en_arriere); });
        connect(b, &QToolButton::clicked, a, &QAction::trigger);
    };
    bouton("cmd_precedent", Qt::UpArrow, "Occurrence précédente (Maj+F3)", {QKeySequence("Shift+F3")}, true);
    bouton("cmd_suivant", Qt::DownArrow, "Occurrence suivante (F3)", {QKeySequence("F3")}, false);
    ligne->addWidget(lab_recherche_);

    auto* trouver = new QAction(this);
    trouver->setShortcut(QKeySequence::Find);
    addAction(trouver);
    connect(trouver, &QAction::triggered, this, [this] {
        recherche_->setFocus();
        recherche_->selectAll();
    });
    auto* arriere = new QAction(this);
    arriere->setShortcut(QKeySequence("Shift+Return"));
    arriere->setShortcutContext(Qt::WidgetShortcut);
    recherche_->addAction(arriere);
    connect(arriere, &QAction::triggered, this, [this] { cherche(true); });
    connect(recherche_, &QLineEdit::returnPressed, this, [this] { cherche(false); });
    connect(recherche_, &QLineEdit::textEdited, lab_recherche_, &QLabel::clear);
    return barre;
}

void guide::lit() {
    texte_->setSource(QUrl::fromLocalFile(chemin_), QTextDocument::MarkdownResource);
    texte_->reload(); // the same source again reads nothing by itself
    texte_->habille();
    construit_sommaire();
}

void guide::construit_sommaire() {
    sommaire_->clear();
    titres_.clear();
    entrees_.clear();
    QTreeWidgetItem* par_niveau[5] = {};
    for (QTextBlock b = texte_->document()->begin(); b.isValid(); b = b.next()) {
        const int niveau = b.blockFormat().headingLevel();
        if (niveau == niveau_reglage) entrees_ << b.position();
        if (niveau < 2 || niveau > 4) continue;
        QTreeWidgetItem* pere = par_niveau[niveau - 1];
        auto* t = pere ? new QTreeWidgetItem(pere) : new QTreeWidgetItem(sommaire_);
        t->setText(0, b.text());
        t->setToolTip(0, b.text());
        t->setData(0, role_position, b.position());
        par_niveau[niveau] = t;
        std::fill(par_niveau + niveau + 1, std::end(par_niveau), nullptr);
        titres_ << t;
        if (niveau == 2) t->setExpanded(true);
    }
    suit_lecture();
}

/// The section to the top of the text.
void guide::va_a(QTreeWidgetItem* titre) {
    QTextCursor c(texte_->document());
    c.setPosition(titre->data(0, role_position).toInt());
    texte_->setTextCursor(c);
    texte_->montre(c.position());
    sommaire_->setCurrentItem(titre); // the last sections cannot come to the top
}

/// Marks the section that is being read.
void guide::suit_lecture() {
    const int haut = texte_->cursorForPosition({style::espace(2), style::espace(6)}).position();
    QTreeWidgetItem* lu = nullptr;
    for (QTreeWidgetItem* t : titres_)
        if (t->data(0, role_position).toInt() <= haut) lu = t;
    sommaire_->setCurrentItem(lu);
}

/// The next occurrence, from the other end when there is none on this side.
void guide::cherche(bool en_arriere) {
    const QString mot = recherche_->text();
    if (mot.isEmpty()) return recherche_->setFocus();
    const auto sens = en_arriere ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool trouve = texte_->find(mot, sens), reprise = false;
    if (!trouve) {
        const QTextCursor avant = texte_->textCursor();
        QTextCursor bout(texte_->document());
        if (en_arriere) bout.movePosition(QTextCursor::End);
        texte_->setTextCursor(bout);
        trouve = reprise = texte_->find(mot, sens);
        if (!trouve) texte_->setTextCursor(avant);
    }
    lab_recherche_->setText(!trouve ? "introuvable" : reprise ? "reprise à l'autre bout" : "");
}

QString guide::fichier(const session& s) {
    const QString chemin = QString::fromStdString(s.dossier_depart) + "/guide/guide.md";
    return QFile::exists(chemin) ? chemin : QString();
}

int guide::page_de(const QString& fenetre) {
    for (int i = 0; i < int(std::size(sections)); ++i)
        if (fenetre == QLatin1String(sections[i].fenetre)) return i;
    return -1;
}

QString guide::titre_page(int page) {
    return page >= 0 && page < int(std::size(sections)) ? QString::fromUtf8(sections[page].titre) : QString();
}

void guide::montre_page(int page) {
    const QString titre = titre_page(page);
    for (QTreeWidgetItem* t : titres_)
        if (t->text(0) == titre) return va_a(t);
}

void guide::montre_champ(const QString& chemin) {
    const qsizetype rang = reglages_de_reference().indexOf(sans_indices(chemin));
    if (rang < 0 || rang >= entrees_.size()) return;
    QTextCursor c(texte_->document());
    c.setPosition(entrees_[rang]);
    texte_->setTextCursor(c);
    texte_->montre(c.position());
}

/// A link to a heading of the text, or one to the world.
void guide::suit_lien(const QUrl& lien) {
    if (!lien.isRelative() || lien.fragment().isEmpty()) {
        QDesktopServices::openUrl(lien);
        return;
    }
    for (QTreeWidgetItem* t : titres_) {
        QString ancre;
        for (const QChar c : t->text(0).toLower())
            if (c.isLetterOrNumber() || c == '-' || c == ' ') ancre += c == ' ' ? QChar('-') : c;
        if (ancre == lien.fragment()) return va_a(t);
    }
}

void guide::changeEvent(QEvent* e) {
    // Later: the text's own palette follows that of the window.
    if (e->type() == QEvent::PaletteChange && !titres_.isEmpty())
        QTimer::singleShot(0, this, [this] {
            const int lu = texte_->ancre();
            lit();
            texte_->montre(lu);
        });
    fenetre::changeEvent(e);
}
