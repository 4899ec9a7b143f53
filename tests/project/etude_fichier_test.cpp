/// The étude's file: round trips to the byte, every refusal in its words, and a writer killed at any moment.
#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>

#include "project/att_fichier.h"
#include "project/etude_compare.h"
#include "project/etude_fichier.h"
#include "project/etude_listes.h"
#include "project/orb_fichier.h"
#include "project/pwr_fichier.h"
#include "shell/utilitaires.h"
#include "tests/fichiers.h"

namespace {

/// The default étude as JSON, changed at one place.
std::string texte_avec(const std::string& pointeur, const char* valeur) {
    json j = json::parse(texte_etude(etude_par_defaut()));
    j[json::json_pointer(pointeur)] = json::parse(valeur);
    return ecrit_json(j);
}

std::string refus(const std::string& texte) {
    etude e;
    e.notes = "avant";
    std::string raison;
    EXPECT_FALSE(lit_texte_etude(texte, e, raison)) << texte.substr(0, 200);
    EXPECT_EQ(e.notes, "avant");
    return raison;
}

etude relit(const etude& e) {
    etude lue;
    std::string raison;
    const std::string texte = texte_etude(e);
    EXPECT_TRUE(lit_texte_etude(texte, lue, raison)) << raison;
    EXPECT_EQ(texte_etude(lue), texte);
    return lue;
}

/// An étude with nothing at its default, by the table of fields.
etude tout_autre() {
    etude e = etude_par_defaut();
    std::string raison;
    for (const champ_etude& c : etude_champs()) {
        if (c.liste || c.annexe) continue;
        for (int i = 0; i < c.nombre(); ++i) {
            const element_etude x{&c, 0, i};
            const double v = valeur_montree(e, x);
            bool fait = false;
            for (const double autre : {v + 1, v - 1, v / 3, v + .01, 0., -1.})
                fait = fait || (autre != v && change_champ(e, x, autre, raison));
            EXPECT_TRUE(fait) << nom_element(x) << " : " << raison;
        }
    }
    e.modele.physique = true;
    e.modele.sans_aero = true;
    e.modele.controle.loi = loi_controle::pd;
    e.modes = {{.nom = "toujours", .puissance = 1.5}, {.nom = "« nuit »", .puissance = 2}};
    e.modes[1].quand.genre = genre_quand::periode;
    e.stations = {{"Kiruna", 67.8571, 20.9643, .402, 10}};
    e.courbes = "[{\"titre\": \"puissances\", \"rang\": 1.0}]";
    e.notes = "Première ligne\nseconde \"ligne\"\t\\";
    e.nom_orbite = "ma basse orbite";
    return e;
}

} // namespace

TEST(etude_fichier, every_field_comes_back_to_the_last_bit) {
    const etude e = tout_autre(), lue = relit(e);
    for (const champ_etude& c : etude_champs())
        for (int i = 0; !c.liste && i < c.nombre(); ++i)
            EXPECT_EQ(valeur(lue, {&c, 0, i}), valeur(e, {&c, 0, i})) << nom_element({&c, 0, i});
    EXPECT_EQ(lue.modele, e.modele);
    EXPECT_EQ(lue.modes, e.modes);
    EXPECT_EQ(lue.stations, e.stations);
    EXPECT_EQ(lue.criteres, e.criteres);
    EXPECT_EQ(lue.notes, e.notes);
    EXPECT_EQ(lue.orbit.pointage.yi_init, e.orbit.pointage.yi_init);
    EXPECT_EQ(lue.attitude.face_c, e.attitude.face_c);

    etude copie = etude_par_defaut();
    copie_reglages(e, copie);
    EXPECT_EQ(texte_etude(copie), texte_etude(e));

    // Every element is found by the name that it gives itself.
    for (const champ_etude& c : etude_champs()) {
        if (c.annexe || c.liste) continue;
        for (int i = 0; i < c.nombre(); ++i) {
            element_etude x;
            std::string raison;
            ASSERT_TRUE(cherche_champ(nom_element({&c, 0, i}), e, x, raison)) << raison;
            EXPECT_TRUE(x.champ == &c && x.element == i) << nom_element({&c, 0, i});
            EXPECT_FALSE(titre_element(x).empty() || !*c.groupe) << c.nom;
        }
    }
}

TEST(etude_fichier, the_three_older_files_pass_through_an_etude_unchanged) {
    const dossier_essai d;
    int vus = 0;
    for (const auto& f : fs::directory_iterator(std::string(DONNEES_TEST) + "/cas")) {
        etude e = etude_par_defaut();
        std::string raison;
        erreur_fichier erreur;
        const std::string fin = f.path().extension(), copie = d / ("copie" + fin);
        if (fin == ".pwr")
            ASSERT_TRUE(charge_energie(f.path(), e.power, e.periode, erreur));
        else if (fin == ".att")
            ASSERT_TRUE(charge_attitude(f.path(), e.attitude, raison));
        else if (fin == ".orb")
            ASSERT_TRUE(charge_orbite(f.path(), e.orbit.orbite, raison));
        else
            continue;
        ASSERT_TRUE(sauve_etude(d / "e.kestrel", e, raison)) << f.path() << " : " << raison;
        etude lue;
        ASSERT_TRUE(charge_etude(d / "e.kestrel", lue, raison)) << raison;
        if (fin == ".pwr")
            ASSERT_TRUE(sauve_energie(copie, lue.power, lue.periode));
        else if (fin == ".att")
            ASSERT_TRUE(sauve_attitude(copie, lue.attitude, raison));
        else
            ASSERT_TRUE(sauve_orbite(copie, lue.orbit.orbite, raison));
        EXPECT_EQ(lit(copie), lit(f.path())) << f.path();
        ++vus;
    }
    EXPECT_GE(vus, 38);
}

TEST(etude_fichier, the_format_stays) {
    etude e;
    std::string raison;
    const std::string chemin = std::string(DONNEES_TEST) + "/etude.kestrel";
    ASSERT_TRUE(charge_etude(chemin, e, raison)) << raison;
    EXPECT_EQ(texte_etude(e), lit(chemin));
}

TEST(etude_fichier, what_is_missing_is_default_and_what_is_unknown_stays) {
    etude e = tout_autre();
    std::string raison;
    ASSERT_TRUE(lit_texte_etude("{}", e, raison));
    EXPECT_TRUE(meme_etude(e, etude_par_defaut()));
    ASSERT_TRUE(lit_texte_etude(R"({"orbite": {"orb_jour": 100}, "pointage": {"lacet": 30}})", e, raison));
    EXPECT_EQ(e.periode.j_debut, date_epoque(2001, 99)); // the period of the orbit in use
    EXPECT_NE(e.orbit.pointage.yi_init[0], 0);           // the entry of angles is converted

    const std::string avec = texte_avec("/energie/bat_masse", "{\"x\": [1.0, 1e300, null]}");
    ASSERT_TRUE(lit_texte_etude(avec, e, raison)) << raison;
    EXPECT_EQ(texte_etude(e), avec);
    const std::string partout = R"({"neuf": 1, "modele": {"nom": "reference", "vent": 2}, "modes":
        [{"nom": "radio", "puissance": 3, "quand": "nuit", "couleur": "rouge"}], "criteres": {"bruit": 1}})";
    ASSERT_TRUE(lit_texte_etude(partout, e, raison)) << raison;
    const json j = json::parse(texte_etude(relit(e)));
    EXPECT_EQ(j["neuf"], 1);
    EXPECT_EQ(j["modele"]["vent"], 2);
    EXPECT_EQ(j["modes"][0]["couleur"], "rouge");
    EXPECT_EQ(j["modes"][0]["quand"], json({{"nuit", true}}));
    e.periode.j_debut = 18707 + 1 / 86400.; // less than the second by its rounding
    EXPECT_EQ(json::parse(texte_etude(e))["periode"]["debut_date"], "2001-03-21T00:00:01");
    EXPECT_EQ(j["criteres"]["bruit"], 1);
}

TEST(etude_fichier, refusals_name_the_key_and_the_reason) {
    const struct {
        const char *ou, *valeur, *raison;
    } cas[] = {
        {"/energie/bat_c", "0", "energie.bat_c : 0 n'est pas permis (supérieur à 0)"},
        {"/energie/bat_c", "1e-50", "energie.bat_c : 0 n'est pas permis (supérieur à 0)"},
        {"/energie/bat_c", "1e39", "energie.bat_c : nombre trop grand"},
        {"/energie/bat_c", "\"10\"", "energie.bat_c : un nombre est attendu"},
        {"/energie/bat_c", "null", "energie.bat_c : un nombre est attendu"},
        {"/energie/bat_ns", "256", "energie.bat_ns : 256 n'est pas permis (supérieur à 0, au plus 255)"},
        {"/energie/bat_ns", "2.5", "energie.bat_ns : un nombre entier est attendu"},
        {"/energie/bat_cmin_pct", "100",
         "energie.bat_cmin_pct : 100 n'est pas permis (au moins 0, inférieur à 100)"},
        {"/energie/opt_panel_ext", "-1", "energie.opt_panel_ext : true ou false est attendu"},
        {"/energie/albedo/3", "1.5", "energie.albedo[3] : 1.5 n'est pas permis (de 0 à 1)"},
        {"/energie/albedo", "[1, 1]", "energie.albedo : une liste de 12 nombres est attendue"},
        {"/energie/ch_pt/2", "3", "energie.ch_pt[2] : une liste de 6 nombres est attendue"},
        {"/attitude/I_corps/0/2", "101", "attitude.I_corps[0][2] : 101 n'est pas permis (de -100 à 100)"},
        {"/attitude/cm/1", "0.3", "attitude.cm[1] : 0.3 n'est pas permis (de -0.225 à 0.225)"},
        {"/orbite/orb_excentricite", "1.1", "orbite.orb_excentricite : 1.1 n'est pas permis (de 0 à 1)"},
        {"/orbite/orb_nom", "\"😀\"", "orbite.orb_nom : au plus 24 caractères de Latin-1 sont permis"},
        {"/pointage/tangage", "361", "pointage.tangage : 361 n'est pas permis (de -360 à 360)"},
        {"/periode/pas", "0", "periode.pas : 0 n'est pas permis (de 1 à 2147483647)"},
        {"/periode/debut", "{}", "periode.debut : un nombre est attendu"},
        {"/modele", "\"vrai\"", "modele.nom : \"vrai\" n'est pas permis (\"reference\", \"physique\")"},
        {"/modele", R"({"nom": "physique", "sans": ["vent"]})",
         "modele.sans[0] : \"vent\" n'est pas une partie du modèle"},
        {"/modes", R"([{"nom": "a", "puissance": -1}])",
         "modes[0].puissance : -1 n'est pas permis (au moins 0)"},
        {"/modes", R"([{"quand": {"latitude": [50, 40]}}])",
         "modes[0].quand.latitude : [50, 40] n'est pas permis (de -90 à 90, croissantes)"},
        {"/stations", R"([{"nom": "a", "latitude": 91}])",
         "stations[0].latitude : 91 n'est pas permis (de -90 à 90)"},
        {"/criteres", "[]", "criteres : un objet est attendu"},
        {"/kestrel", "2",
         "kestrel : 2 n'est pas permis (au plus 1 : le fichier vient d'une version plus récente)"},
        {"/kestrel", "0", "kestrel : 0 n'est pas permis (1)"},
        {"/notes", "3", "notes : un texte est attendu"},
    };
    for (const auto& c : cas) EXPECT_EQ(refus(texte_avec(c.ou, c.valeur)), c.raison);

    const std::string bon = texte_etude(etude_par_defaut());
    EXPECT_EQ(refus(bon.substr(0, bon.size() / 2)).substr(0, 6), "ligne ");
    EXPECT_EQ(refus("[]"), "un objet est attendu");
    EXPECT_EQ(refus("{\"notes\": \"\xff\"}"), "ligne 1 : ce n'est pas du JSON");
    EXPECT_EQ(refus("{\n\"energie\": {\"bat_c\": NaN}}"), "ligne 2 : ce n'est pas du JSON");
    EXPECT_EQ(refus("{\n\n\"energie\": {\"bat_c\": 1e999}}"), "ligne 3 : nombre trop grand");
    EXPECT_EQ(refus("{\"notes\": \"\", \"notes\": \"\"}"), "la clé « notes » est là deux fois");
    EXPECT_EQ(refus("{\"x\": " + std::string(100000, '[')), "plus de 32 niveaux");
    EXPECT_EQ(refus(std::string(5u << 20, ' ')), "plus de 4 Mo");
}

TEST(etude_fichier, entries_by_name_are_judged_in_the_unit_that_is_shown) {
    etude e = etude_par_defaut();
    std::string raison;
    const auto pose = [&](std::vector<std::string> v) { return change_champs(e, v, raison); };
    ASSERT_TRUE(pose({"omega_init[0]=2", "I_corps[0][1]=0,5", "p_demand[1]=30", "energie.bat_np=2",
                      "inertiel[2]=90", "orb_demi=8000", "opt_panel_ext=false", "pas_sim=60"}))
        << raison;
    EXPECT_DOUBLE_EQ(e.attitude.omega_init[0], 2 * pi / 180);
    EXPECT_EQ(e.attitude.I_corps(0, 1), .5);
    EXPECT_EQ(e.attitude.I_corps(1, 0), .5);
    EXPECT_EQ(e.attitude.I(1, 0), .5); // the total follows
    EXPECT_EQ(e.power.p_demand[1], 30);
    EXPECT_EQ(e.power.opt_panel_ext, faux);
    EXPECT_LT(e.orbit.orbite.orb_moy_mvt, 12.2);
    EXPECT_NE(e.orbit.pointage.yd_init[1], 0);
    EXPECT_EQ(e.periode.pas_sim, 60);
    // Dimensions before centres, in whatever order they are given.
    EXPECT_TRUE(pose({"cm[0]=0.4", "dim[0]=1"})) << raison;
    EXPECT_DOUBLE_EQ(e.attitude.face_c[0][0], .1);

    e.modes = {{.nom = "radio", .puissance = 1}};
    ASSERT_TRUE(pose({"modes[0].puissance=4", "dod_max=40", "gain=5"})) << raison;
    EXPECT_EQ(e.modes[0].puissance, 4);
    EXPECT_EQ(e.criteres.dod_max, 40);
    EXPECT_EQ(e.modele.controle.gain, 5);

    const std::pair<const char*, const char*> fautes[] = {
        {"bat_c=0", "bat_c : 0 n'est pas permis (supérieur à 0)"},
        {"gst_vregul=0", "gst_vregul : 0 n'est pas permis (de 0.1 à 100)"}, // though it is the default
        {"bat_ns=2.5", "bat_ns : 2.5 n'est pas permis (nombre entier)"},
        {"roulis=181", "roulis : 181 n'est pas permis (de -180 à 180)"},
        {"bat_c=dix", "bat_c : « dix » n'est pas un nombre"},
        {"bat_c", "bat_c : «  » n'est pas un nombre"},
        {"danse=1", "danse : champ inconnu"},
        {"p_demand=3", "p_demand : éléments p_demand[0] à p_demand[1]"},
        {"p_demand[2]=3", "p_demand[2] : éléments p_demand[0] à p_demand[1]"},
        {"bat_c[0]=3", "bat_c[0] : un seul nombre, sans indice"},
        {"Mt=3", "Mt : ce champ se calcule, il ne se donne pas"},
        {"modes[1].puissance=3", "modes[1].puissance : l'étude n'a que 1 modes"},
    };
    for (const auto& [entree, attendu] : fautes) {
        EXPECT_FALSE(pose({entree})) << entree;
        EXPECT_EQ(raison, attendu);
    }
}

TEST(etude_fichier, a_file_is_replaced_whole_or_not_at_all) {
    const dossier_essai d;
    const std::string chemin = d / "e.kestrel";
    etude e = etude_par_defaut();
    std::string raison;
    ASSERT_TRUE(sauve_etude(chemin, e, raison)) << raison;
    fs::create_symlink("e.kestrel", d / "lien.kestrel");
    fs::permissions(chemin, fs::perms::owner_read | fs::perms::owner_write);
    e.notes = "autre";
    ASSERT_TRUE(sauve_etude(d / "lien.kestrel", e, raison)) << raison;
    EXPECT_TRUE(fs::is_symlink(d / "lien.kestrel"));
    EXPECT_EQ(fs::status(chemin).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(lit(chemin), texte_etude(e));

    // A value that could not be read back is refused before the file is touched.
    e.power.bat_c = -1;
    EXPECT_FALSE(sauve_etude(chemin, e, raison));
    EXPECT_EQ(raison, chemin + ": energie.bat_c : -1 n'est pas permis (supérieur à 0)");
    EXPECT_NE(lit(chemin).find("\"bat_c\": 10,"), std::string::npos);
    EXPECT_FALSE(sauve_etude(d / "absent" / "e.kestrel", etude_par_defaut(), raison));
    EXPECT_FALSE(charge_etude(d.chemin, e, raison));

    // A child saves two études in turn and is killed at any moment: one of both is there.
    etude a = etude_par_defaut(), b = a;
    a.notes = std::string(100000, 'a');
    b.notes = std::string(100000, 'b');
    const std::string texte_a = texte_etude(a), texte_b = texte_etude(b);
    ASSERT_TRUE(sauve_etude(chemin, a, raison));
    for (int n = 0; n < 20; ++n) {
        const pid_t enfant = fork();
        if (enfant == 0)
            for (;;) {
                sauve_etude(chemin, b, raison);
                sauve_etude(chemin, a, raison);
            }
        usleep(1000 + 733 * n);
        kill(enfant, SIGKILL);
        waitpid(enfant, nullptr, 0);
        const std::string la = lit(chemin);
        EXPECT_TRUE(la == texte_a || la == texte_b) << la.size();
    }
}
