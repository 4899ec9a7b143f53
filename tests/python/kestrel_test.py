"""The module against the batch program: the same columns to the last bit; fields, limits, faults, threads."""
import contextlib
import csv
import io
import os
import re
import subprocess
import sys
import tempfile
import unittest
import warnings
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import kestrel

BATCH, DONNEES = sys.argv.pop(1), sys.argv.pop(1)
ORB, PWR = (os.path.join(DONNEES, "exemples", "microsatellite." + x) for x in ("orb", "pwr"))
FICHIERS = ["--orb", ORB, "--pwr", PWR]


def batch(*arguments):
    """The columns of a command of the batch program."""
    texte = subprocess.run([BATCH, *arguments], check=True, capture_output=True, text=True).stdout
    lignes = list(csv.reader(io.StringIO(texte)))
    return {nom: [ligne[i] for ligne in lignes[1:]] for i, nom in enumerate(lignes[0])}


def microsatellite():
    e = kestrel.Etude()
    e.lit_orb(ORB)
    e.lit_pwr(PWR)
    return e


class Module(unittest.TestCase):
    def meme(self, colonnes, attendues):
        self.assertEqual(list(colonnes), list(attendues))
        for nom, valeurs in attendues.items():
            if nom == "station":
                self.assertEqual(list(colonnes[nom]), valeurs)
            else:
                self.assertTrue(np.array_equal(colonnes[nom], np.array(valeurs, float)), nom)

    def test_runs_are_those_of_the_batch_program(self):
        e = microsatellite()
        self.meme(e.simule_energie(), batch("energie", *FICHIERS))
        self.meme(e.simule_energie(colonnes=["sim_date", "node_t_8", "sat_alt"], pas=120),
                  batch("energie", *FICHIERS, "--pas", "120", "--colonnes", "sim_date,node_t_8,sat_alt"))
        self.meme(e.orbite(fin="2024-03-20 13:00:00"), batch("orbite", *FICHIERS, "--fin", "2024-03-20 13:00:00"))
        self.meme(e.bilan(), batch("bilan", *FICHIERS))
        self.meme(e.annee(dates=3), batch("bilan", *FICHIERS, "--annee", "--dates", "3"))
        self.meme(e.passages(["Ici,48,2"]), batch("passages", *FICHIERS, "--station", "Ici,48,2"))
        self.meme(e.balayage(["bat_c=8,15", "cel_np=5:6:1"]),
                  batch("balayage", *FICHIERS, "--varie", "bat_c=8,15", "--varie", "cel_np=5:6:1"))
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            self.meme(kestrel.Etude().simule_attitude(pas=1, ecriture=600),
                      batch("attitude", "--pas", "1", "--ecriture", "600"))
        e.physique = True
        self.meme(e.couple(pas=60), batch("couple", *FICHIERS, "--pas", "60", "--modele", "physique"))

    def test_fields_have_units_and_limits(self):
        e = kestrel.Etude()
        e.energie.bat_c = 20
        e["p_demand[1]"] = 33.5
        self.assertEqual((e.energie.bat_c, e.energie.p_demand[1]), (20, 33.5))
        for champ, faux in (("bat_c", 0), ("bat_ns", 2.5), ("p_demand", (1, 2, 3))):
            with self.assertRaises(ValueError):
                setattr(e.energie, champ, faux)
        with self.assertRaises(AttributeError):
            e.energie.bat_z = 1
        self.assertIn("Ah", type(e.energie).bat_c.__doc__)
        with tempfile.TemporaryDirectory() as dossier:
            chemin = os.path.join(dossier, "x.kestrel")
            e.ecrit(chemin)
            self.assertEqual(kestrel.Etude(chemin).energie.bat_c, 20)

    def test_a_fault_keeps_the_rows_before_it(self):
        e = kestrel.Etude()
        e.energie.ext_alpha0 = (0.78,) + tuple(e.energie.ext_alpha0[1:])  # above its limit
        with self.assertRaises(kestrel.Faute) as leve:
            e.simule_energie()
        self.assertGreater(leve.exception.date, 18000)
        self.assertIn("gen_power", leve.exception.lignes)

    def test_the_examples_of_the_page_run(self):
        page = os.path.join(DONNEES, "..", "docs", "python.md")
        with open(page, encoding="utf-8") as f:
            exemples = re.findall(r"```python\n(.*?)```", f.read(), re.S)
        self.assertGreater(len(exemples), 4)
        noms = {"EXEMPLES": os.path.join(DONNEES, "exemples")}
        for exemple in exemples:
            try:
                with contextlib.redirect_stdout(io.StringIO()):
                    exec(exemple, noms)
            except ModuleNotFoundError as absent:  # pandas and matplotlib serve the examples alone
                self.assertIn(absent.name, ("pandas", "matplotlib"))

    def test_the_tutorial_of_the_guide_gives_what_it_shows(self):
        guide = os.path.join(DONNEES, "..", "docs", "guide.md")
        with open(guide, encoding="utf-8") as f:
            blocs = re.findall(r"```python\n(.*?)```\n\n```\n(.*?)```", f.read(), re.S)
        self.assertGreaterEqual(len(blocs), 1)
        with contextlib.chdir(os.path.join(DONNEES, "exemples")):
            for commandes, sortie in blocs:
                with contextlib.redirect_stdout(io.StringIO()) as dit:
                    exec(commandes, {})
                self.assertEqual(dit.getvalue(), sortie)

    def test_threads_share_nothing(self):
        etudes = [microsatellite() for _ in range(4)]
        for i, e in enumerate(etudes):
            e.energie.bat_c = 8 + i
        with ThreadPoolExecutor() as fils:
            ensemble = list(fils.map(lambda e: e.simule_energie()["bat_soc"][-1], etudes))
        self.assertEqual(ensemble, [e.simule_energie()["bat_soc"][-1] for e in etudes])


unittest.main()
