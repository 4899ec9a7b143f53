/// The examples of the user's guide: the commands give what the guide shows, to the letter.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <vector>

namespace {

struct exemple {
    std::string commandes, sortie;
};

/// The blocks of commands ("sh") of the guide, each with the block of output behind it. Those of Python are
/// run by the module's own test.
std::vector<exemple> exemples_du_guide() {
    std::ifstream fichier(std::string(DOSSIER_DATA) + "/../docs/guide.md");
    std::vector<exemple> liste;
    std::string ailleurs;
    std::string *bloc = nullptr, *sortie = &ailleurs;
    for (std::string l; std::getline(fichier, l);) {
        if (!l.starts_with("```")) {
            if (bloc) *bloc += l + '\n';
        } else if (bloc) {
            bloc = nullptr;
        } else if (l == "```sh") {
            bloc = &liste.emplace_back().commandes;
            sortie = &liste.back().sortie;
        } else if (l == "```python") {
            bloc = sortie = &ailleurs;
        } else {
            bloc = sortie;
        }
    }
    return liste;
}

std::string execute(const std::string& commandes) {
    const std::string script = "export LC_ALL=fr_FR.UTF-8 PATH=\"$(dirname '" KESTREL_BATCH
                               "'):$PATH\"; cd '" DOSSIER_DATA "/exemples'\n" +
                               commandes;
    std::FILE* tube = popen(script.c_str(), "r");
    std::string sortie;
    char tampon[4096];
    for (std::size_t n; (n = std::fread(tampon, 1, sizeof tampon, tube)) > 0;) sortie.append(tampon, n);
    EXPECT_EQ(pclose(tube), 0) << commandes;
    return sortie;
}

} // namespace

TEST(guide, the_examples_give_what_is_shown) {
    const auto liste = exemples_du_guide();
    ASSERT_GE(liste.size(), 13u);
    for (const exemple& e : liste) EXPECT_EQ(execute(e.commandes), e.sortie) << e.commandes;
}
