#include "widgets/export_traces.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

#include "shell/formats.h"
#include "shell/utilitaires.h"
#include "widgets/fichiers.h"
#include "widgets/graduation.h"
#include "widgets/traces.h"

namespace {

/// A curve of the table, and where it stands in its rows.
struct colonne {
    const trace_courbe* courbe;
    std::size_t place;
};

/// Name, unit and run of a column; what the picture's corner says stands with the current run.
QString tete(const trace_courbe& c, const QString& mention) {
    QString t = c.nom;
    if (!c.unite.isEmpty()) t += " (" + c.unite + ")";
    if (const QString calcul = c.calcul.isEmpty() ? mention : c.calcul; !calcul.isEmpty())
        t += " [" + calcul + "]";
    return t;
}

QByteArray tableau(const dessin_traces& d, char separateur, forme_csv f) {
    QByteArray t = "date";
    t += separateur + QByteArray("j");
    std::vector<colonne> colonnes;
    for (const trace_graphique& g : d.graphiques)
        for (const trace_courbe& c : g.courbes) {
            if (!c.donnees) continue;
            t += separateur + cellule_csv(tete(c, d.mention), f);
            colonnes.push_back({&c, c.donnees->depuis(d.debut)});
        }
    t += '\n';
    constexpr double meme = .0005 / secondes_par_jour; // [days]
    for (;;) {
        double j = INFINITY;
        for (const colonne& c : colonnes)
            if (c.place < c.courbe->donnees->taille()) j = std::min(j, c.courbe->donnees->date(c.place));
        if (!(j <= d.fin)) return t;
        t += texte_instant(j).toLatin1();
        t += separateur + nombre_csv(j, f);
        for (colonne& c : colonnes) {
            const serie& s = *c.courbe->donnees;
            const bool ici = c.place < s.taille() && s.date(c.place) <= j + meme;
            t += separateur;
            if (ici) t += nombre_csv(s.valeur(c.place++), f);
        }
        t += '\n';
    }
}

QImage image(const traces& t) {
    constexpr double echelle = 2;
    QImage i(t.size() * echelle, QImage::Format_RGB32);
    i.setDevicePixelRatio(echelle);
    QPainter p(&i);
    t.peint_papier(p, t.size());
    return i;
}

QByteArray svg(const traces& t) {
    QBuffer tampon;
    QSvgGenerator g;
    g.setOutputDevice(&tampon);
    g.setSize(t.size());
    g.setViewBox(QRect(QPoint(0, 0), t.size()));
    g.setTitle("KESTREL");
    QPainter p(&g);
    t.peint_papier(p, t.size());
    p.end();
    return tampon.data();
}

QByteArray pdf(const traces& t) {
    QBuffer tampon;
    tampon.open(QIODevice::WriteOnly);
    QPdfWriter f(&tampon);
    f.setCreator("KESTREL");
    f.setResolution(96);
    f.setPageSize(QPageSize(QSizeF(t.size()) * 72 / 96, QPageSize::Point));
    f.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter p(&f);
    t.peint_papier(p, t.size());
    p.end();
    return tampon.data();
}

QByteArray png(const traces& t) {
    QBuffer tampon;
    tampon.open(QIODevice::WriteOnly);
    image(t).save(&tampon, "PNG");
    return tampon.data();
}

} // namespace

QByteArray cellule_csv(const QString& texte, forme_csv f) {
    QString t = texte;
    const bool guillemets = t.contains(separateur_csv(f)) || t.contains('"') || t.contains('\n');
    if (guillemets) t = '"' + t.replace("\"", "\"\"") + '"';
    return t.toUtf8();
}

QByteArray nombre_csv(double x, forme_csv f) {
    if (!std::isfinite(x)) return {};
    QByteArray t = QByteArray::fromStdString(format_court(x));
    if (f == forme_csv::point_virgule) t.replace('.', ',');
    return t;
}

QByteArray csv_traces(const dessin_traces& d, forme_csv f) { return tableau(d, separateur_csv(f), f); }

bool enregistre_traces(QWidget* parent, const traces& t, const QString& chemin, forme_csv f) {
    const QString c = chemin.toLower();
    const QByteArray octets = c.endsWith(".csv")   ? csv_traces(t.dessin(), f)
                              : c.endsWith(".svg") ? svg(t)
                              : c.endsWith(".pdf") ? pdf(t)
                                                   : png(t);
    return enregistre_octets(parent, chemin, octets);
}

void copie_image_traces(const traces& t) { QGuiApplication::clipboard()->setImage(image(t)); }

void copie_donnees_traces(const traces& t) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8(
        tableau(t.dessin(), '\t',
                QLocale().decimalPoint() == QString(",") ? forme_csv::point_virgule : forme_csv::virgule)));
}
