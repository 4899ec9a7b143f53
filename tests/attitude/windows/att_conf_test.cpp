/// The attitude settings as a person uses them: type, tab, tick, scroll, close and open again.
#include "attitude/windows/att_conf.h"

#include <QComboBox>
#include <QScrollBar>

#include "tests/gestes.h"

using gestes::messages;

namespace {

class att_conf_window : public gestes::essai_fenetre<att_conf> {
protected:
    void SetUp() override { ouvre(); }
    void saisit(const char* nom, const char* texte) { tape(nom, texte, Qt::Key_Return); }
    bool dessine(const char* nom) { return !controle(nom)->isHidden(); }
};

TEST_F(att_conf_window, limits_correct_silently_and_the_centre_follows_the_body) {
    saisit("cmx", "5");
    EXPECT_EQ(lu("cmx"), "0.225"); // half of 0.45 m
    saisit("dimens1", "100");
    EXPECT_EQ(lu("dimens1"), "90");
    EXPECT_DOUBLE_EQ(s.attitude.dim[0], 90);
    saisit("cmx", "-60");
    EXPECT_EQ(lu("cmx"), "-45");
    EXPECT_DOUBLE_EQ(s.attitude.face_c[0][0], 90); // half the body beyond a centre at -45 m
    saisit("dimens1", "1,5");                      // a comma is a decimal separator too
    EXPECT_EQ(lu("dimens1"), "1.5");
    EXPECT_EQ(lu("cmx"), "-0.75");
    EXPECT_DOUBLE_EQ(s.attitude.cm[0], -0.75);
    EXPECT_DOUBLE_EQ(s.attitude.I(1, 1), 2.347 + 50 * 0.75 * 0.75); // Steiner
    EXPECT_EQ(label("lbl_Iyy_all"), "30.4720");

    saisit("sxt_neg", "11");
    EXPECT_DOUBLE_EQ(s.attitude.st[3], 10);
    saisit("cdz_pos", "-1");
    EXPECT_DOUBLE_EQ(s.attitude.cd[2], 0);
    saisit("txt_jets_z", "0.25");
    EXPECT_DOUBLE_EQ(s.attitude.jets[2], 0.25);

    saisit("Masse", "-200"); // negative masses are accepted, on purpose
    EXPECT_DOUBLE_EQ(s.attitude.Masse, -100);
    EXPECT_EQ(s.config_modifiee, 1);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(att_conf_window, a_text_that_is_no_number_is_refused_and_nothing_is_lost) {
    const attitude_record avant = s.attitude;
    for (const char* faux : {"deux", "1e999", "nan", "3 4"}) {
        messages.clear();
        tape("I_xz", faux);
        EXPECT_EQ(messages, QStringList("Type de donnée non valide")) << faux;
        EXPECT_EQ(lu("I_xz"), "0") << faux;
        EXPECT_TRUE(controle("I_xz")->hasFocus()) << faux;
    }
    EXPECT_EQ(s.attitude.I_corps.e, avant.I_corps.e);
    EXPECT_EQ(s.config_modifiee, 0);
}

TEST_F(att_conf_window, products_and_dampers_reach_the_totals) {
    saisit("I_xy", "0.5");
    saisit("I_yz", "0.25");
    EXPECT_EQ(label("lbl_Ixy_all"), "0.5000");
    EXPECT_EQ(label("lbl_Iyz_all"), "0.2500");
    clique("chk_damp");
    controle("chk_damp")->setFocus();
    QTest::keyClick(controle("chk_damp"), Qt::Key_Return); // Enter moves on from a check box too
    EXPECT_EQ(QApplication::focusWidget(), controle("txt_md1"));
    saisit("txt_md1", "2");
    saisit("txt_ld1", "0.5");
    saisit("txt_k2", "0.4");
    EXPECT_EQ(label("lbl_mass_all"), "54.0000"); // a damper's mass counts twice
    EXPECT_EQ(label("lbl_Iyy_all"), "3.3470");   // 2.347 + 2 x 0.5² x 2
    EXPECT_EQ(label("lbl_Ixx_all"), "2.1880");
    EXPECT_TRUE(dessine("Pict_damp"));
    clique("chk_damp");
    for (const vec3& v : {s.attitude.md, s.attitude.ld, s.attitude.c, s.attitude.k}) EXPECT_EQ(v, vec3{});
    EXPECT_EQ(lu("txt_md1"), "0");
    EXPECT_FALSE(controle("txt_k2")->isEnabled());
    EXPECT_EQ(label("lbl_mass_all"), "50.0000");
    EXPECT_FALSE(dessine("Pict_damp"));
}

TEST_F(att_conf_window, one_external_mass_at_a_time) {
    auto* axe = controle<QScrollBar>("scroll_axe_grad");
    saisit("txt_masse_grad", "1.239");
    saisit("txt_dist_grad", "600");
    EXPECT_EQ(lu("txt_masse_grad"), "1.24"); // shown with two decimals, kept whole
    EXPECT_EQ(lu("txt_dist_grad"), "500.00");
    EXPECT_EQ(s.attitude.mext, (vec3{1.239, 0, 0}));
    EXPECT_EQ(s.attitude.dext, (vec3{500, 0, 0}));
    EXPECT_TRUE(dessine("Pict_masxp"));

    saisit("txt_dist_grad", "2");
    EXPECT_NEAR(s.attitude.I(2, 2), 2.541 + 2 * 4 * 1.239, 1e-12);
    for (int i = 0; i < 3; ++i) QTest::keyClick(axe, Qt::Key_Right);
    EXPECT_EQ(label("lab_axe_grad"), "-Y");
    EXPECT_EQ(s.attitude.mext, (vec3{0, 1.239, 0}));
    EXPECT_EQ(s.attitude.dext, (vec3{0, -2, 0}));
    EXPECT_TRUE(dessine("pict_masym"));
    for (const char* autre : {"Pict_masxp", "Pict_masxm", "Pict_masyp", "Pict_maszp", "Pict_maszm"})
        EXPECT_FALSE(dessine(autre)) << autre;
    EXPECT_EQ(label("lbl_mass_all"), "51.2390");

    // Opened again, the window reads axis and sign back from the record.
    clique("cmd_ok");
    EXPECT_FALSE(f->isVisible());
    const attitude_record avant = s.attitude;
    ouvre();
    EXPECT_EQ(label("lab_axe_grad"), "-Y");
    EXPECT_EQ(lu("txt_dist_grad"), "2.00");
    QTest::keyClick(controle<QScrollBar>("scroll_axe_grad"), Qt::Key_End);
    EXPECT_EQ(label("lab_axe_grad"), "-Z");
    EXPECT_EQ(s.attitude.dext, (vec3{0, 0, avant.dext[1]}));
    EXPECT_EQ(s.attitude.mext[2], 1.239);
}

TEST_F(att_conf_window, check_boxes_clear_their_fields_alone) {
    EXPECT_TRUE(controle<QCheckBox>("chk_magn")->isChecked()); // the default satellite has a residual dipole
    EXPECT_FALSE(controle<QCheckBox>("chk_roue")->isChecked());
    EXPECT_TRUE(dessine("Pict_mag"));
    saisit("dip_x_act", "3");
    clique("chk_magn");
    EXPECT_EQ(s.attitude.dip_res, vec3{});
    EXPECT_DOUBLE_EQ(s.attitude.dip_act[0], 3);
    EXPECT_EQ(lu("dip_z"), "0");
    EXPECT_FALSE(controle("dip_z")->isEnabled());
    EXPECT_FALSE(dessine("Pict_mag"));

    clique("chk_roue");
    ASSERT_TRUE(controle("txt_JR2")->isEnabled());
    saisit("txt_JR2", "0.02");
    saisit("txt_OM2", "90");
    EXPECT_DOUBLE_EQ(s.attitude.OM_init[1], 90 * 3.14159265358979 / 180);
    EXPECT_EQ(lu("txt_OM2"), "90");
    for (const QLabel* l : f->findChildren<QLabel*>()) EXPECT_NE(l->text(), "rad/s"); // boxes are in degrees
    EXPECT_TRUE(dessine("Pict_roues"));
    s.attitude.OM[1] = 4; // the run's own copy is left alone
    clique("chk_roue");
    EXPECT_EQ(s.attitude.JR, vec3{});
    EXPECT_EQ(s.attitude.OM_init, vec3{});
    EXPECT_DOUBLE_EQ(s.attitude.OM[1], 4);
    EXPECT_FALSE(dessine("Pict_roues"));
}

TEST_F(att_conf_window, an_opened_project_reloads_every_control) {
    s.attitude = {};
    s.attitude.Masse = 12;
    s.attitude.dip_res = {};
    s.attitude.JR = {0, 0, .1};
    s.attitude.cr[4] = .33;
    s.attitude.Mt = 999; // as a file may hold it: the load computes the totals anew
    f->form_load();
    EXPECT_EQ(lu("Masse"), "12");
    EXPECT_EQ(label("lbl_mass_all"), "12.0000");
    EXPECT_EQ(lu("cry_neg"), "0.33");
    EXPECT_FALSE(controle<QCheckBox>("chk_magn")->isChecked());
    EXPECT_TRUE(controle<QCheckBox>("chk_roue")->isChecked());
    EXPECT_TRUE(controle("txt_JR3")->isEnabled());
    EXPECT_EQ(s.config_modifiee, 0);
}

TEST_F(att_conf_window, management_notes_are_kept_by_axis) {
    f->montre_page(3);
    saisit("gain", "1.5");
    controle<QComboBox>("cmb_axes")->setCurrentText("Y");
    EXPECT_EQ(lu("gain"), "0");
    saisit("gain", "2.5");
    controle<QComboBox>("cmb_axe_roue")->setCurrentText("Z");
    saisit("vs_r", "6000");
    saisit("a_con_2", "45");
    controle<QComboBox>("cmb_axes")->setCurrentText("X");
    EXPECT_EQ(lu("gain"), "1.5");
    controle<QComboBox>("cmb_axe_roue")->setCurrentText("X");
    EXPECT_EQ(lu("vs_r"), "0");
    controle<QComboBox>("cmb_axe_roue")->setCurrentText("Z");
    EXPECT_EQ(lu("vs_r"), "6000");
    f->form_load();
    EXPECT_EQ(lu("a_con_2"), "45");
    EXPECT_EQ(s.config_modifiee, 0); // no simulation reads them
}

TEST_F(att_conf_window, closing_takes_the_entry_in_progress_and_every_field_explains_itself) {
    auto* b = controle<QLineEdit>("dimens3");
    b->setFocus();
    b->selectAll();
    QTest::keyClicks(b, "0.8");
    f->close();
    EXPECT_FALSE(f->isVisible());
    EXPECT_DOUBLE_EQ(s.attitude.dim[2], 0.8);
    for (QLineEdit* l : f->findChildren<QLineEdit*>())
        EXPECT_FALSE(l->toolTip().isEmpty()) << l->objectName().toStdString();
}

} // namespace
