"""Writes the type stubs of the module kestrel (kestrel.pyi) from its docstrings."""
import sys

import kestrel

SIGNATURES = {
    "copie": "(self) -> Etude", "lit_pwr": "(self, chemin: str) -> None", "lit_att": "(self, chemin: str) -> None",
    "lit_orb": "(self, chemin: str) -> None", "lit_tle": "(self, chemin: str) -> None",
    "ecrit": "(self, chemin: str) -> None", "ecrit_pwr": "(self, chemin: str) -> None",
    "ecrit_att": "(self, chemin: str) -> None", "ecrit_orb": "(self, chemin: str) -> None",
    "verdict": "(self, orbites: int | None = None) -> dict[str, Any]",
    "bilan": "(self, orbites: int | None = None) -> Colonnes", "annee": "(self, dates: int = 24) -> Colonnes",
    "passages": "(self, stations: Sequence[str] | None = None, debut: Date = None, fin: Date = None) -> dict[str, Any]",
    "balayage": "(self, varie: Sequence[str], mesures: Sequence[str] | None = None, tirages: int | None = None,"
                " graine: int = 0, coeurs: int = 0, orbites: int | None = None) -> Colonnes",
    "simule_attitude": "(self, debut: Date = None, fin: Date = None, pas: int | None = None,"
                       " colonnes: Sequence[str] | None = None, ecriture: int = 1) -> Colonnes",
}
PERIODE = ("(self, debut: Date = None, fin: Date = None, pas: int | None = None,"
           " colonnes: Sequence[str] | None = None) -> Colonnes")


def docstring(texte, marge):
    lignes = (texte or "").strip().splitlines()
    return marge + '"""' + ("\n" + marge).join(lignes) + '"""'


def type_de(valeur):
    if isinstance(valeur, tuple):
        return "Sequence[Sequence[float]]" if valeur and isinstance(valeur[0], tuple) else "Sequence[float]"
    return type(valeur).__name__


def main():
    e = kestrel.Etude()
    sections = ["orbite", "pointage", "energie", "attitude", "controle", "criteres", "periode"]
    lignes = [docstring(kestrel.__doc__, ""), "from collections.abc import Sequence", "from typing import Any",
              "import numpy as np", "", "Colonnes = dict[str, np.ndarray]", "Date = float | str | None", "",
              "__version__: str", "", "class Faute(RuntimeError):", docstring(kestrel.Faute.__doc__, "    "),
              "    date: float", "    raison: str", "    lignes: Colonnes", ""]
    for nom in sections:
        section = getattr(e, nom)
        lignes += [f"class _{nom}:", docstring(type(section).__doc__, "    ")]
        for champ in dir(section):
            valeur = getattr(section, champ)
            lignes += [f"    @property", f"    def {champ}(self) -> {type_de(valeur)}:",
                       docstring(getattr(type(section), champ).__doc__, "        "),
                       f"    @{champ}.setter", f"    def {champ}(self, valeur: {type_de(valeur)}) -> None: ..."]
        if nom == "orbite":
            lignes.append(f"    def __call__{PERIODE}: ...")
        lignes.append("")
    lignes += ["class Etude:", docstring(kestrel.Etude.__doc__, "    "),
               "    def __init__(self, chemin: str | None = None) -> None: ..."]
    lignes += [f"    {nom}: _{nom}" for nom in sections]
    lignes += ["    notes: str", "    physique: bool", "    stations: list[str]",
               "    def __getitem__(self, nom: str) -> float: ...",
               "    def __setitem__(self, nom: str, valeur: float) -> None: ..."]
    for nom in sorted(n for n in vars(kestrel.Etude) if not n.startswith("_")):
        if callable(getattr(kestrel.Etude, nom)):
            lignes.append(f"    def {nom}{SIGNATURES.get(nom, PERIODE)}: ...")
    lignes += ["", "def variables() -> dict[str, dict[str, Any]]: ...", ""]
    with open(sys.argv[1], "w", encoding="utf-8") as f:
        f.write("\n".join(lignes))


main()
