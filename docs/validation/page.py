#!/usr/bin/env python3
"""Joins what the tests have noted to what the page says of it: validation.md and its drawings.

page.py RELEVES.tsv FICHES.toml FOLDER: writes FOLDER/validation.md and FOLDER/images/validation/*.svg. Fails when
a check of the page has not been noted, has left its tolerance, or has been noted and stands on no page.
"""
import math
import os
import sys
import tomllib
from html import escape


def nombre(x):
    """Two digits, as French print has them."""
    if not math.isfinite(x):
        return "—"
    if x == 0:
        return "0"
    mantisse, exposant = f"{x:.1e}".split("e")
    e = int(exposant)
    if -3 <= e <= 3:
        t = f"{x:.{max(0, 1 - e)}f}".replace(".", ",")
        return t.rstrip("0").rstrip(",") if "," in t else t
    mantisse = "" if mantisse == "1.0" else mantisse.replace(".", ",").removesuffix(",0") + "·"
    return mantisse + "10" + str(e).translate(
        str.maketrans("-0123456789", "⁻⁰¹²³⁴⁵⁶⁷⁸⁹"))


def lit_releves(chemin):
    ecarts, courbes = {}, {}
    with open(chemin, encoding="utf-8") as f:
        for ligne in f:
            c = ligne.rstrip("\n").split("\t")
            if c[0] == "ecart":
                vu = ecarts.get(c[1])
                x, tolere = float(c[2]), float(c[3])
                # The one that comes nearest to its tolerance, or that is no number at all.
                if vu is None or not x / tolere <= vu[0] / vu[1]:
                    ecarts[c[1]] = (x, tolere, c[4])
            else:
                courbes.setdefault(c[1], {}).setdefault(c[2], {})[float(c[3])] = float(c[4])
    return ecarts, courbes


# -- What the curves of the model are drawn against

def eclipse(beta):
    r = math.sqrt(1 - (6378.137 / 7174) ** 2) / math.cos(math.radians(beta))
    return 100 * math.acos(r) / math.pi if r < 1 else 0


def refroidissement(minutes):
    return (300**-3 + 3 * 0.85 * 5.67e-8 * 60 * minutes / 1600) ** (-1 / 3)


def penombre(angle):
    """Share of the Sun's disc above a straight horizon, by strips: at 7000 km the Earth's edge is one."""
    bord = 180 - math.degrees(math.asin(6378.137 / 7000))
    demi = math.degrees(math.asin(695700 / 149597870.7))
    h = (bord - angle) / demi  # of the horizon from the middle, in radii
    n = 4000
    tranches = [(k + 0.5) * 2 / n - 1 for k in range(n)]
    return sum(math.sqrt(1 - y * y) for y in tranches if y < h) * 2 / n * 2 / math.pi


THEORIES = {
    "eclipse": ("forme close", eclipse),
    "refroidissement": ("forme close", refroidissement),
    "penombre": ("aire par tranches", penombre),
}
COULEURS = ["#1f6fc4", "#a0432a", "#2f8a3e"]


def graduations(a, b, log):
    if log:
        bornes = range(math.floor(a), math.ceil(b) + 1)
        pas = max(1, len(bornes) // 6)
        return [k for k in list(bornes)[::pas] if a - 1e-9 <= k <= b + 1e-9]
    brut = (b - a) / 6
    dix = 10 ** math.floor(math.log10(brut))
    pas = next(f * dix for f in (1, 2, 5, 10) if f * dix >= brut * (1 - 1e-9))
    return [k * pas for k in range(math.ceil(a / pas - 1e-9), math.floor(b / pas + 1e-9) + 1)]


def dessine(figure, courbes):
    nom, log = figure["nom"], figure.get("log", "")
    fx = math.log10 if "x" in log else float
    fy = math.log10 if "y" in log else float
    series = {k: sorted(v.items()) for k, v in courbes.items()}
    xs = [x for s in series.values() for x, _ in s]
    theorie = []
    if nom in THEORIES:
        a, b = min(xs), max(xs)
        theorie = [(x, THEORIES[nom][1](x)) for x in (a + (b - a) * k / 200 for k in range(201))]
    if nom == "ordre":  # through the point of the smallest step
        x0, y0 = min(series["modèle"])
        theorie = [(x, y0 * (x / x0) ** 4) for x, _ in series["modèle"]]
    tous = [p for s in series.values() for p in s] + theorie
    x0, x1 = min(fx(x) for x, _ in tous), max(fx(x) for x, _ in tous)
    y0, y1 = min(fy(y) for _, y in tous), max(fy(y) for _, y in tous)
    marge = 0.05 * (y1 - y0)
    y0, y1 = (y0 - marge, y1 + marge) if log or y0 < 0 or y0 > 0.3 * y1 else (0, y1 + marge)
    g, d, h, b = 74, 668, 30, 236
    px = lambda x: g + (d - g) * (fx(x) - x0) / (x1 - x0)
    py = lambda y: b - (b - h) * (fy(y) - y0) / (y1 - y0)
    t = ['<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 680 280" font-family="sans-serif" font-size="11">',
         f"<title>{escape(figure['legende'])}</title>", '<rect width="680" height="280" fill="#ffffff"/>']
    for v in graduations(y0, y1, "y" in log):
        y = b - (b - h) * (v - y0) / (y1 - y0)
        mot = nombre(10.0**v) if "y" in log else f"{v:.6g}".replace(".", ",")
        t.append(f'<path d="M{g} {y:.1f}H{d}" stroke="#d3d6dc" stroke-width=".6"/>'
                 f'<text x="{g - 6}" y="{y + 4:.1f}" text-anchor="end">{mot}</text>')
    pas_x = sorted({x for x, _ in tous if "x" in log}) or graduations(x0, x1, False)
    for v in pas_x:
        x = px(v)
        t.append(f'<path d="M{x:.1f} {b}v4" stroke="#7a808a"/>'
                 f'<text x="{x:.1f}" y="{b + 16}" text-anchor="middle">{f"{v:.6g}".replace(".", ",")}</text>')
    t.append(f'<rect x="{g}" y="{h}" width="{d - g}" height="{b - h}" fill="none" stroke="#7a808a" '
             f'stroke-width=".8"/>')
    t.append(f'<text x="{d}" y="{b + 34}" text-anchor="end" fill="#5c6370">{escape(figure["x"])}</text>'
             f'<text x="4" y="16" fill="#5c6370">{escape(figure["y"])}</text>')
    legende = 300
    def nomme(texte, marque):
        nonlocal legende
        t.append(marque.format(x=legende, y=12) + f'<text x="{legende + 26}" y="16">{escape(texte)}</text>')
        legende += 46 + 6 * len(texte)
    if theorie:
        points = " ".join(f"{px(x):.1f},{py(y):.1f}" for x, y in theorie)
        t.append(f'<polyline points="{points}" fill="none" stroke="#333333" stroke-width="1.4"/>')
        nomme(THEORIES[nom][0] if nom in THEORIES else "pente 4",
              '<path d="M{x} {y}h20" stroke="#333333" stroke-width="1.4"/>')
    for k, (serie, points) in enumerate(series.items()):
        couleur = COULEURS[k]
        if len(points) > 100 and not theorie:
            trace = " ".join(f"{px(x):.1f},{py(y):.1f}" for x, y in points)
            t.append(f'<polyline points="{trace}" fill="none" stroke="{couleur}" stroke-width="1.4"/>')
            nomme(serie, f'<path d="M{{x}} {{y}}h20" stroke="{couleur}" stroke-width="1.4"/>')
            continue
        pas = max(1, len(points) // 24)
        for x, y in points[::pas]:
            t.append(f'<circle cx="{px(x):.1f}" cy="{py(y):.1f}" r="3" fill="none" stroke="{couleur}" '
                     f'stroke-width="1.6"/>')
        nomme(serie, f'<circle cx="{{x}}" cy="{{y}}" r="3" fill="none" stroke="{couleur}" stroke-width="1.6"/>')
    return "\n".join(t) + "\n</svg>\n"


DEBUT = """# Validation

Ce que les modèles valent : chacun est tenu devant quelque chose qui ne vient pas de lui, forme close, valeur publiée,
autre bibliothèque ou grandeur conservée. Cette page est écrite par `docs/validation.sh` à partir des tests, qui
mesurent ; ils échouent quand un écart dépasse ce qui est toléré, et la vérification de chaque changement refait la page.

**{nombre} contrôles, {hors}.** Un « rapport » est sans unité et se compare à 1. Le test de chaque ligne se
lance par `ctest -R NOM`.
"""

FIN = """
## Comparaisons faites une fois

Les couples, le moment et le champ de `kestrel_batch attitude --modele physique` ont aussi été comparés à un second
programme écrit depuis les seules formules : 2·10⁻¹⁹ N m, 2·10⁻¹⁷ N m s, 5·10⁻⁴ nT (son champ venait de différences du
potentiel), et la variation du moment sur un tour à l'intégrale des couples, 5·10⁻⁸ N m s pour 0,016. Ces comparaisons
ne sont pas refaites à chaque changement.
"""


def main(releves, fiches, dossier):
    with open(fiches, "rb") as f:
        modeles = tomllib.load(f)["modele"]
    ecarts, courbes = lit_releves(releves)
    defauts, page, vus = [], [], set()
    images = os.path.join(dossier, "images", "validation")
    os.makedirs(images, exist_ok=True)
    for m in modeles:
        page.append(f"\n## {m['titre']}\n\n{m['est']} (`{m['lieu']}`)\n\n**Où cela s'arrête.** {m['limites']}\n\n"
                    "| Contrôle | Devant quoi | Écart | Toléré | Test |\n|---|---|---|---|---|\n")
        for c in m["controle"]:
            nom, unite = c["nom"], " " + c["unite"] if "unite" in c else ""
            vus.add(nom)
            if nom not in ecarts:
                defauts.append(f"{nom} : contrôle absent, aucun test ne l'a relevé")
                continue
            x, tolere, test = ecarts[nom]
            if not x <= tolere:
                defauts.append(f"{nom} : {x:g}, toléré {tolere:g} ({test})")
            page.append(f"| {c['quoi']} | {c['source']} | {nombre(x)}{unite} | {nombre(tolere)}{unite} | `{test}` |\n")
        if "figure" in m:
            f = m["figure"]
            if f["nom"] not in courbes:
                defauts.append(f"{f['nom']} : figure sans points")
                continue
            with open(os.path.join(images, f["nom"] + ".svg"), "w", encoding="utf-8") as svg:
                svg.write(dessine(f, courbes[f["nom"]]))
            page.append(f"\n![{f['legende']}](images/validation/{f['nom']}.svg)\n\n*{f['legende']}*\n")
    defauts += [f"{n} : relevé par un test, absent de la page" for n in sorted(set(ecarts) - vus)]
    hors = "tous dans leur tolérance" if not defauts else f"{len(defauts)} en défaut"
    with open(os.path.join(dossier, "validation.md"), "w", encoding="utf-8") as md:
        md.write(DEBUT.format(nombre=len(vus), hors=hors) + "".join(page) + FIN)
    for d in defauts:
        print("validation : " + d, file=sys.stderr)
    print(f"{len(vus)} contrôles, {hors}")
    return 1 if defauts else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
