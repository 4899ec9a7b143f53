#include "analysis/windows/rapport_pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextObjectInterface>
#include <QTextTable>

#include "analysis/rapport.h"

namespace {

constexpr int resolution = 96; // the drawings' own pixel
const QColor encre(0x22, 0x26, 0x2d), gris(0x5c, 0x63, 0x70), filet(0xc9, 0xce, 0xd6), vert(0x2f, 0x8a, 0x3e),
    rouge(0xa0, 0x43, 0x2a);

/// Draws the drawings of a document where they stand as characters.
class dessins : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    static constexpr int genre = QTextFormat::UserObject + 1;
    enum propriete { p_svg = QTextFormat::UserProperty + 1, p_largeur, p_hauteur };

    using QObject::QObject;

    QSizeF intrinsicSize(QTextDocument* d, int, const QTextFormat& f) override {
        const double place = d->pageSize().width() - 2 * d->documentMargin();
        const double echelle = std::min(1., place / f.doubleProperty(p_largeur));
        return {f.doubleProperty(p_largeur) * echelle, f.doubleProperty(p_hauteur) * echelle};
    }
    void drawObject(QPainter* p, const QRectF& r, QTextDocument*, int, const QTextFormat& f) override {
        QSvgRenderer svg(f.property(p_svg).toByteArray());
        p->save();
        p->setClipRect(r, Qt::IntersectClip);
        svg.render(p, r);
        p->restore();
    }
};

QString qs(const std::string& t) { return QString::fromStdString(t); }

QTextCharFormat lettres(double points, const QColor& couleur = encre, bool gras = false) {
    QTextCharFormat f;
    f.setFontPointSize(points);
    f.setForeground(couleur);
    f.setFontWeight(gras ? QFont::Bold : QFont::Normal);
    return f;
}

QTextCharFormat lettres(ton_texte t) {
    return lettres(9.5, t == ton_texte::alerte    ? QColor(0xb3, 0x26, 0x1e)
                        : t == ton_texte::discret ? gris
                                                  : encre);
}

struct ecrivain_pdf {
    QTextCursor c;
    QList<int> titres{}; ///< blocks that must stay with what follows

    void alinea(double avant, double apres) {
        QTextBlockFormat f;
        f.setTopMargin(avant);
        f.setBottomMargin(apres);
        if (c.position() == 0)
            c.setBlockFormat(f);
        else
            c.insertBlock(f);
    }

    void operator()(const bloc_titre& b) {
        alinea(b.niveau == 1 ? 0 : 16, 4);
        titres << c.block().blockNumber();
        c.insertText(qs(b.texte), lettres(b.niveau == 1 ? 17 : 12.5, encre, true));
    }
    void operator()(const bloc_texte& b) {
        alinea(2, 4);
        c.insertText(qs(b.texte).replace('\n', QChar::LineSeparator), lettres(b.ton));
    }
    void operator()(const bloc_verdict& b) {
        const QColor couleur = b.signe == signe_rapport::tient       ? vert
                               : b.signe == signe_rapport::tient_pas ? rouge
                                                                     : gris;
        const QString signe = b.signe == signe_rapport::tient       ? "● tient"
                              : b.signe == signe_rapport::tient_pas ? "● ne tient pas"
                                                                    : "○ sans verdict";
        QTextTableFormat f = cadre();
        f.setBorder(1.2);
        f.setBorderBrush(couleur);
        f.setCellPadding(8);
        f.setTopMargin(8);
        f.setBottomMargin(8);
        QTextTable* t = c.insertTable(1, 1, f);
        QTextCursor dans = t->cellAt(0, 0).firstCursorPosition();
        dans.insertText(signe + QChar(QChar::LineSeparator), lettres(10.5, couleur, true));
        dans.insertText(qs(b.texte), lettres(10.5, encre, true));
        c.movePosition(QTextCursor::End);
    }
    void operator()(const bloc_liste& b) {
        QTextListFormat f;
        f.setStyle(QTextListFormat::ListDisc);
        f.setIndent(1);
        QTextList* liste = nullptr;
        for (const std::string& l : b.lignes) {
            alinea(1, 2);
            liste ? liste->add(c.block()) : void(liste = c.createList(f));
            c.setBlockCharFormat(lettres(b.ton));
            c.insertText(qs(l), lettres(b.ton));
        }
    }
    void operator()(const bloc_tableau& b) {
        const double taille = b.dense ? 7.5 : 9.5;
        if (!b.legende.empty()) {
            alinea(8, 2);
            titres << c.block().blockNumber();
            c.insertText(qs(b.legende), lettres(9.5, encre, true));
        }
        const int tete = b.entete.empty() ? 0 : 1;
        const int colonnes = int(b.nombre.size());
        QTextTableFormat f = cadre();
        f.setCellPadding(b.dense ? 2.5 : 3.5);
        f.setHeaderRowCount(tete);
        f.setTopMargin(2);
        f.setBottomMargin(8);
        QTextTable* t = c.insertTable(int(b.lignes.size()) + tete, colonnes, f);
        for (int k = 0; tete && k < colonnes; ++k)
            case_(t, 0, k, b.entete[std::size_t(k)], b.nombre[std::size_t(k)], lettres(taille, encre, true),
                  true);
        for (int l = 0; l < int(b.lignes.size()); ++l)
            for (int k = 0; k < colonnes; ++k) {
                const bool marque = k == 0 && !b.marques.empty();
                const bool tenu = marque && b.marques[std::size_t(l)];
                case_(t, l + tete, k, b.lignes[std::size_t(l)][std::size_t(k)], b.nombre[std::size_t(k)],
                      marque ? lettres(taille, tenu ? vert : rouge, !tenu) : lettres(taille), false);
            }
        c.movePosition(QTextCursor::End);
    }
    void operator()(const bloc_figure& b) {
        alinea(6, 0);
        QTextCharFormat f;
        f.setObjectType(dessins::genre);
        f.setProperty(dessins::p_svg, QByteArray::fromStdString(b.svg));
        f.setProperty(dessins::p_largeur, b.largeur);
        f.setProperty(dessins::p_hauteur, b.hauteur);
        titres << c.block().blockNumber(); // its legend too
        c.insertText(QString(QChar::ObjectReplacementCharacter), f);
        alinea(0, 4);
        c.insertText(qs(b.legende), lettres(8.5, gris));
    }

private:
    QTextTableFormat cadre() const {
        QTextTableFormat f;
        f.setBorder(0);
        f.setCellSpacing(0);
        f.setBorderCollapse(true);
        f.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        return f;
    }
    static void case_(QTextTable* t, int l, int k, const std::string& texte, bool nombre,
                      const QTextCharFormat& lettres, bool tete) {
        QTextTableCell place = t->cellAt(l, k);
        QTextTableCellFormat f;
        f.merge(lettres); // the height of an empty one
        f.setBottomBorder(tete ? 1 : 0.6);
        f.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        f.setBottomBorderBrush(tete ? gris : filet);
        f.setVerticalAlignment(tete ? QTextCharFormat::AlignBottom : QTextCharFormat::AlignTop);
        place.setFormat(f);
        QTextCursor dans = place.firstCursorPosition();
        QTextBlockFormat bloc;
        bloc.setAlignment(nombre ? Qt::AlignRight : Qt::AlignLeft);
        dans.setBlockFormat(bloc);
        dans.insertText(qs(texte), lettres);
    }
};

/// A heading at the foot of a page goes over with what it heads; from the first to the last, each moves the
/// rest.
void tient_ensemble(QTextDocument& d, const QList<int>& titres) {
    const auto page_de = [&d](const QTextBlock& b, double plus) {
        const QRectF r = d.documentLayout()->blockBoundingRect(b);
        return int((r.top() + plus * r.height()) / d.pageSize().height());
    };
    for (const int n : titres) {
        const QTextBlock titre = d.findBlockByNumber(n);
        // Of a run of headings, the first one goes.
        if (!titre.next().isValid() || page_de(titre, 0.5) >= page_de(titre.next(), 0.5)) continue;
        QTextBlock premier = titre;
        while (titres.contains(premier.blockNumber() - 1) &&
               page_de(premier.previous(), 0.5) == page_de(titre, 0.5))
            premier = premier.previous();
        QTextBlockFormat f = premier.blockFormat();
        f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(premier).setBlockFormat(f);
    }
}

/// The report laid out for a device, page by page.
class mise_en_page {
public:
    mise_en_page(const rapport& r, QPaintDevice* papier, const QSizeF& page)
        : titre_(qs(r.titre)), page_(page) {
        d_.documentLayout()->setPaintDevice(papier);
        d_.documentLayout()->registerHandler(dessins::genre, &peintre_);
        police_.setStyleHint(QFont::SansSerif);
        d_.setDefaultFont(police_);
        d_.setDocumentMargin(0);
        d_.setPageSize(page);
        ecrivain_pdf e{QTextCursor(&d_)};
        e.c.beginEditBlock(); // laid out once, not after each word
        for (const bloc_rapport& b : r.blocs) std::visit(e, b);
        e.c.endEditBlock();
        tient_ensemble(d_, e.titres);
    }
    int pages() const { return d_.pageCount(); }
    /// The page k, from 0, within its margins; its foot stands below them.
    void dessine(QPainter& p, int k) {
        QAbstractTextDocumentLayout::PaintContext contexte;
        contexte.palette.setColor(QPalette::Text, encre);
        contexte.clip = QRectF(0, k * page_.height(), page_.width(), page_.height());
        p.save();
        p.translate(0, -k * page_.height());
        p.setClipRect(contexte.clip.adjusted(0, 0, 0, -1)); // nothing of the next page
        d_.documentLayout()->draw(&p, contexte);
        p.restore();
        QFont pied = police_;
        pied.setPointSizeF(7.5);
        p.setFont(pied);
        p.setPen(gris);
        const QRectF bas(0, page_.height() + 14, page_.width(), 20);
        p.drawText(bas, Qt::AlignLeft | Qt::AlignTop, titre_);
        p.drawText(bas, Qt::AlignRight | Qt::AlignTop, QString("%1 / %2").arg(k + 1).arg(pages()));
    }

private:
    QString titre_;
    QSizeF page_;
    QFont police_{"DejaVu Sans"};
    dessins peintre_;
    QTextDocument d_;
};

QPageLayout feuille_a4() {
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, {15, 15, 15, 18}, QPageLayout::Millimeter};
}

} // namespace

QByteArray rapport_pdf(const rapport& r) {
    QByteArray octets;
    QBuffer tampon(&octets);
    tampon.open(QIODevice::WriteOnly);
    QPdfWriter papier(&tampon);
    papier.setResolution(resolution);
    papier.setPageLayout(feuille_a4());
    papier.setTitle(qs(r.titre));
    papier.setCreator("KESTREL");
    mise_en_page m(r, &papier, QSizeF(papier.width(), papier.height()));
    QPainter p(&papier);
    for (int k = 0; k < m.pages(); ++k) {
        if (k > 0) papier.newPage();
        m.dessine(p, k);
    }
    p.end();
    return octets;
}

QImage rapport_page(const rapport& r, int page) {
    const QRect feuille = feuille_a4().fullRectPixels(resolution),
                place = feuille_a4().paintRectPixels(resolution);
    QImage image(feuille.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(resolution / 0.0254));
    image.setDotsPerMeterY(qRound(resolution / 0.0254));
    mise_en_page m(r, &image, place.size());
    QPainter p(&image);
    p.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    p.translate(place.topLeft());
    m.dessine(p, page);
    return image;
}

#include "rapport_pdf.moc"
