/// The report as one HTML file, written as XML so that any reader takes it.
#include "analysis/dessin_svg.h"
#include "analysis/rapport.h"

namespace {

constexpr const char* feuille = R"(
@page { size: A4; margin: 16mm 15mm; }
body { font: 14px/1.45 "DejaVu Sans", "Liberation Sans", Arial, sans-serif; color: #22262d; background: #fff;
  max-width: 740px; margin: 24px auto; padding: 0 12px; }
h1 { font-size: 24px; margin: 0 0 2px; } h2 { font-size: 17px; margin: 26px 0 8px; border-bottom: 1px solid #c9ced6;
  padding-bottom: 3px; break-after: avoid; page-break-after: avoid; }
p { margin: 6px 0; white-space: pre-line; } .discret { color: #5c6370; } .alerte { color: #b3261e; }
.verdict { border: 1px solid; border-left-width: 8px; padding: 10px 14px; margin: 14px 0; font-weight: bold; }
.tient { border-color: #2f8a3e; } .tient_pas { border-color: #a0432a; } .inconnu { border-color: #878d96; }
.verdict .signe { display: block; } .tient .signe { color: #2f8a3e; } .tient_pas .signe { color: #a0432a; }
table { border-collapse: collapse; width: 100%; margin: 6px 0 12px; font-variant-numeric: tabular-nums; }
caption { text-align: left; font-weight: bold; padding: 4px 0; }
th, td { padding: 3px 7px; text-align: left; vertical-align: top; border-bottom: 1px solid #dfe3e8; }
th { border-bottom: 1px solid #878d96; vertical-align: bottom; } .n { text-align: right; }
table.dense { font-size: 11px; } table.dense th, table.dense td { padding: 2px 4px; }
td.n { white-space: nowrap; }
tr { break-inside: avoid; page-break-inside: avoid; } thead { display: table-header-group; }
td.oui { color: #2f8a3e; white-space: nowrap; } td.non { color: #a0432a; font-weight: bold; white-space: nowrap; }
figure { margin: 8px 0 14px; break-inside: avoid; page-break-inside: avoid; }
figure svg { width: 100%; height: auto; display: block; overflow: hidden; }
figcaption { margin-top: 4px; font-size: 12px; color: #5c6370; } li { margin: 3px 0; }
)";

const char* classe(ton_texte t) {
    return t == ton_texte::alerte ? " class=\"alerte\"" : t == ton_texte::discret ? " class=\"discret\"" : "";
}

struct ecrivain_html {
    std::string t;

    void operator()(const bloc_titre& b) {
        const std::string balise = "h" + std::to_string(b.niveau);
        t += "<" + balise + ">" + echappe_xml(b.texte) + "</" + balise + ">\n";
    }
    void operator()(const bloc_texte& b) {
        t += std::string("<p") + classe(b.ton) + ">" + echappe_xml(b.texte) + "</p>\n";
    }
    void operator()(const bloc_verdict& b) {
        constexpr const char* classes[] = {"tient", "tient_pas", "inconnu"};
        constexpr const char* signes[] = {"● tient", "● ne tient pas", "○ sans verdict"};
        const auto s = static_cast<std::size_t>(b.signe);
        t += std::string("<div id=\"verdict\" class=\"verdict ") + classes[s] + "\"><span class=\"signe\">" +
             signes[s] + "</span><span class=\"phrase\">" + echappe_xml(b.texte) + "</span></div>\n";
    }
    void operator()(const bloc_liste& b) {
        t += std::string("<ul") + classe(b.ton) + ">\n";
        for (const std::string& l : b.lignes) t += "<li>" + echappe_xml(l) + "</li>\n";
        t += "</ul>\n";
    }
    void operator()(const bloc_tableau& b) {
        t += b.dense ? "<table class=\"dense\">\n" : "<table>\n";
        if (!b.legende.empty()) t += "<caption>" + echappe_xml(b.legende) + "</caption>\n";
        if (!b.entete.empty()) {
            t += "<thead><tr>";
            for (std::size_t c = 0; c < b.entete.size(); ++c)
                t += (b.nombre[c] ? "<th class=\"n\">" : "<th>") + echappe_xml(b.entete[c]) + "</th>";
            t += "</tr></thead>\n";
        }
        t += "<tbody>\n";
        for (std::size_t l = 0; l < b.lignes.size(); ++l) {
            t += "<tr>";
            for (std::size_t c = 0; c < b.lignes[l].size(); ++c) {
                const bool marque = c == 0 && !b.marques.empty();
                t += marque        ? (b.marques[l] ? "<td class=\"oui\">" : "<td class=\"non\">")
                     : b.nombre[c] ? "<td class=\"n\">"
                                   : "<td>";
                t += echappe_xml(b.lignes[l][c]) + "</td>";
            }
            t += "</tr>\n";
        }
        t += "</tbody></table>\n";
    }
    void operator()(const bloc_figure& b) {
        t += "<figure>\n" + b.svg + "\n<figcaption>" + echappe_xml(b.legende) + "</figcaption></figure>\n";
    }
};

} // namespace

std::string rapport_html(const rapport& r) {
    ecrivain_html e{
        "<!DOCTYPE html>\n<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"fr\">\n<head>\n<meta "
        "charset=\"utf-8\"/>\n<meta name=\"viewport\" content=\"width=device-width\"/>\n<title>" +
        echappe_xml(r.titre) + "</title>\n<style>" + feuille + "</style>\n</head>\n<body>\n"};
    for (const bloc_rapport& b : r.blocs) std::visit(e, b);
    return e.t + "</body>\n</html>\n";
}
