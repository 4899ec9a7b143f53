#include "analysis/windows/lecture_courbes.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <cmath>

#include "analysis/calcul_courbes.h"
#include "widgets/graduation.h"
#include "widgets/style.h"

namespace {

QString texte(double x, int decimales) { return QString::fromStdString(nombre_courbe(x, decimales)); }

/// What a unit becomes over hours; watts are told in Wh.
QString unite_heure(const QString& u) {
    return u == "W" ? "Wh" : u == "A" ? "Ah" : u.isEmpty() ? "h" : u + "·h";
}

} // namespace

lecture_courbes::lecture_courbes(QWidget* parent) : QTableWidget(parent) {
    setObjectName("tab_lecture");
    setAccessibleName("Valeurs des courbes au curseur et entre les marques");
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setSelectionMode(ContiguousSelection);
    setFont(style::police_nombres());
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + style::espace(1));
    setColumnCount(nb_colonnes);
}

void lecture_courbes::pose(int l, int c, const QString& t) {
    if (auto* i = item(l, c)) {
        i->setText(t);
        return;
    }
    auto* i = new QTableWidgetItem(t);
    i->setTextAlignment(Qt::AlignVCenter | (c <= calcul ? Qt::AlignLeft : Qt::AlignRight));
    setItem(l, c, i);
}

void lecture_courbes::suit(const dessin_traces& d) {
    clearContents();
    int n = 0;
    for (const trace_graphique& g : d.graphiques) n += int(g.courbes.size());
    setRowCount(n);
    int l = 0;
    for (const trace_graphique& g : d.graphiques)
        for (const trace_courbe& c : g.courbes) {
            pose(l, courbe, c.unite.isEmpty() ? c.titre : c.titre + " (" + c.unite + ")");
            item(l, courbe)->setForeground(style::en_texte(style::accorde(c.couleur, style::sombre())));
            pose(l, calcul, c.calcul.isEmpty() ? "actuel" : c.calcul);
            ++l;
        }
    lit(d, true);
}

void lecture_courbes::lit(const dessin_traces& d, bool marques) {
    const auto date = [](const QString& quoi, const std::optional<double>& j) {
        return j ? quoi + "\n" + texte_instant(*j) : quoi;
    };
    setHorizontalHeaderLabels({"Courbe", "Calcul", date("Curseur", d.date), date("A", d.a), date("B", d.b),
                               "B − A", "Minimum", "Moyenne", "Maximum", "Intégrale"});
    int l = 0;
    for (const trace_graphique& g : d.graphiques)
        for (const trace_courbe& c : g.courbes) {
            const double x = c.donnees ? c.donnees->en(d.date) : NAN;
            pose(l, curseur, texte(x, c.decimales));
            if (marques) {
                const bool deux = d.a && d.b && c.donnees;
                const lecture_serie r = deux ? c.donnees->lit(std::min(*d.a, *d.b), std::max(*d.a, *d.b))
                                             : lecture_serie{NAN, NAN, NAN, NAN, NAN, NAN};
                const double a = d.a && c.donnees ? c.donnees->en(*d.a) : NAN;
                const double b = d.b && c.donnees ? c.donnees->en(*d.b) : NAN;
                pose(l, en_a, texte(a, c.decimales));
                pose(l, en_b, texte(b, c.decimales));
                pose(l, difference, texte(b - a, c.decimales));
                pose(l, minimum, texte(r.min, c.decimales));
                pose(l, moyenne, texte(r.moyenne, c.decimales));
                pose(l, maximum, texte(r.max, c.decimales));
                pose(l, integrale,
                     deux ? texte(r.integrale, std::max(c.decimales, 2)) + " " + unite_heure(c.unite)
                          : QString("—"));
            }
            ++l;
        }
    if (marques) resizeColumnsToContents();
}

void lecture_courbes::copie() {
    const QList<QTableWidgetSelectionRange> choix = selectedRanges();
    const QTableWidgetSelectionRange r =
        choix.isEmpty() || (choix[0].rowCount() == 1 && choix[0].columnCount() == 1)
            ? QTableWidgetSelectionRange(0, 0, rowCount() - 1, columnCount() - 1)
            : choix[0];
    QStringList lignes, tetes;
    for (int c = r.leftColumn(); c <= r.rightColumn(); ++c) // without headings before the first run
        tetes << (horizontalHeaderItem(c) ? horizontalHeaderItem(c)->text().replace('\n', ' ') : QString());
    lignes << tetes.join('\t');
    for (int l = r.topRow(); l <= r.bottomRow(); ++l) {
        QStringList cellules;
        for (int c = r.leftColumn(); c <= r.rightColumn(); ++c)
            cellules << (item(l, c) ? item(l, c)->text() : "");
        lignes << cellules.join('\t');
    }
    QGuiApplication::clipboard()->setText(lignes.join('\n'));
}

void lecture_courbes::keyPressEvent(QKeyEvent* e) {
    if (e->matches(QKeySequence::Copy))
        copie();
    else
        QTableWidget::keyPressEvent(e);
}
