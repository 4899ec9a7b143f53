#include "shell/windows/guide_reference.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <vector>

#include "project/champs_notes.h"
#include "project/etude_champs.h"
#include "shell/formats.h"
#include "shell/windows/guide.h"

namespace {

QString fr(const std::string& t) { return QString::fromStdString(t); }

QString grande_initiale(QString t) {
    if (!t.isEmpty()) t[0] = t[0].toUpper();
    return t;
}

/// The settings of the chapter, by subject.
const std::vector<std::vector<const champ_etude*>>& sujets() {
    static const auto t = [] {
        std::vector<std::vector<const champ_etude*>> groupes;
        for (const champ_etude& c : etude_champs()) {
            if (c.annexe) continue;
            const auto meme = [&c](const auto& g) {
                return QLatin1String(g[0]->groupe) == QLatin1String(c.groupe);
            };
            auto g = std::find_if(groupes.begin(), groupes.end(), meme);
            if (g == groupes.end()) g = groupes.insert(groupes.end(), std::vector<const champ_etude*>{});
            g->push_back(&c);
        }
        return groupes;
    }();
    return t;
}

/// The default as the window shows it; of a list its elements, where they are few.
QString defaut(const champ_etude& c) {
    constexpr int elements_max = 12;
    if (c.liste || c.nombre() > elements_max) return {};
    static const etude e = etude_par_defaut();
    QStringList valeurs;
    for (int i = 0; i < c.nombre(); ++i) {
        const double x = valeur_montree(e, {&c, 0, i});
        const int rang = c.genre == genre_nombre::drapeau ? x != 0 : int(x) - c.premier_choix;
        if (c.genre == genre_nombre::drapeau && c.choix.empty())
            valeurs << (x != 0 ? "oui" : "non");
        else if (!c.choix.empty())
            valeurs << fr(rang >= 0 && rang < int(c.choix.size()) ? c.choix[std::size_t(rang)] : "");
        else
            valeurs << fr(format_court(x));
    }
    if (valeurs.count(valeurs[0]) == valeurs.size()) valeurs = valeurs.mid(0, 1);
    return valeurs.join(", ") + " par défaut";
}

/// What the number's type alone sets is no limit for people.
limites sans_bornes_du_type(limites b) {
    constexpr double entier_max = 2147483647;
    if (b.max >= entier_max) b.max = INFINITY;
    if (b.min <= -entier_max) b.min = -INFINITY;
    return b;
}

QString elements(const champ_etude& c) {
    QStringList noms;
    if (const int colonnes = c.dims[1]; c.nombre() && c.elements[0].nom.find(" : ") != std::string::npos) {
        // A table: ", point 1 : tension du point".
        QStringList lignes;
        for (int i = 0; i < c.nombre(); ++i) {
            const QString nom = fr(c.elements[i].nom).mid(2);
            if (i % colonnes == 0) lignes << nom.section(" : ", 0, 0);
            if (i < colonnes)
                noms << QString("[%1] %2 (%3)")
                            .arg(i)
                            .arg(nom.section(" : ", 1), c.elements[i].energie->unite);
        }
        return "\n\nLignes : " + lignes.join(", ") + ". Colonnes : " + noms.join(", ") + ".";
    }
    for (const auto& e : c.elements)
        if (!e.nom.empty()) noms << fr(e.nom).remove(QRegularExpression("^, "));
    return noms.isEmpty() ? QString() : "\n\nÉléments : " + noms.join(" ; ") + ".";
}

QString entree(const champ_etude& c) {
    const note_champ* note = note_de(c.nom);
    QStringList faits;
    if (note && *note->symbole) faits << QString("symbole %1").arg(note->symbole);
    if (!c.unite.empty()) faits << "unité " + fr(c.unite);
    if (c.genre == genre_nombre::entier && c.choix.empty()) faits << "nombre entier";
    if (c.choix.empty() && c.genre != genre_nombre::drapeau)
        if (const QString bornes = fr(texte_bornes(sans_bornes_du_type(c.bornes))); !bornes.isEmpty())
            faits << bornes;
    if (c.demi_dim) faits << "à moins d'une demi-dimension du corps";
    if (!c.choix.empty()) {
        QStringList choix;
        for (const char* x : c.choix) choix << QString::fromUtf8(x);
        faits << "au choix : " + choix.join(", ");
    }
    if (const QString d = defaut(c); !d.isEmpty()) faits << d;
    QString t = QString("%1 %2 · %3\n\n%4.")
                    .arg(QString(niveau_reglage, '#'), grande_initiale(fr(c.titre)), fr(c.nom),
                         grande_initiale(fr(c.sens)));
    if (!faits.isEmpty()) t += ' ' + grande_initiale(faits.join(" ; ")) + '.';
    if (const int page = guide::page_de(c.fenetre); page >= 0)
        t += QString(" Se règle dans : %1 (%2).").arg(guide::titre_page(page), QString::fromUtf8(c.groupe));
    t += elements(c);
    const QString formule = note ? QString::fromUtf8(note->formule) : QString();
    if (note) t += (formule.contains('=') ? "\n\nFormule : " : "\n\nEffet : ") + formule + ".";
    if (note && *note->source) t += " Source : " + QString::fromUtf8(note->source) + ".";
    return t;
}

} // namespace

QString reference_reglages() {
    QString t =
        "## Référence des réglages\n\nChaque réglage par son nom dans le fichier de l'étude, celui que prend "
        "`--champ`. F1 dans une boîte ouvre son entrée ; Ctrl+K la trouve par son nom.\n\n";
    for (const auto& g : sujets()) {
        t += QString("### Réglages : %1\n\n").arg(QString::fromUtf8(g[0]->groupe));
        for (const champ_etude* c : g) t += entree(*c) + "\n\n";
    }
    // No line begins with a double sign.
    return t.replace(" :", QString(QChar::Nbsp) + ':').replace(" ;", QString(QChar::Nbsp) + ';');
}

QStringList reglages_de_reference() {
    QStringList noms;
    for (const auto& g : sujets())
        for (const champ_etude* c : g) noms << sans_indices(fr(chemin_element({c, 0, 0})));
    return noms;
}

QString sans_indices(const QString& chemin) {
    static const QRegularExpression indices("\\[[0-9]*\\]");
    return QString(chemin).remove(indices);
}
