#include "shell/windows/pages.h"

#include "analysis/windows/page_banc.h"
#include "analysis/windows/page_bilan.h"
#include "analysis/windows/page_carte.h"
#include "analysis/windows/page_courbes.h"
#include "analysis/windows/page_etudes.h"
#include "power/windows/vue3d_datee.h"
#include "widgets/page.h"

namespace {

template <class P>
page* cree(session& s) {
    return new P(s);
}

/// The map, with the three-dimensional view at its date.
page* cree_carte(session& s) {
    auto* p = new page_carte(s);
    p->ajoute_vue("Vue 3D", [&s, p] {
        auto* v = new vue3d_datee(s);
        QObject::connect(p, &page_carte::etat_montre, v, &vue3d_datee::montre);
        return v;
    });
    return p;
}

/// The attitude bench, with the three-dimensional view of its run.
page* cree_banc(session& s) {
    auto* p = new page_banc(s);
    p->ajoute_vue([&s, p] {
        auto* v = new vue3d_datee(s);
        v->suit_satellite();
        QObject::connect(p, &page_banc::attitude_montree, v, &vue3d_datee::montre_attitude);
        return v;
    });
    return p;
}

/// One line for each page: {"page_bilan", "Bilan", "page_bilan", cree<page_bilan>}.
constexpr page_etabli table[] = {
    {"page_bilan", "Bilan", "page_bilan", cree<page_bilan>},
    {"page_courbes", "Courbes", "page_courbes", cree<page_courbes>},
    {"page_carte", "Carte", "page_carte", cree_carte},
    {"page_banc", "Banc d'attitude", "page_banc", cree_banc},
    {"page_etudes", "Études", "page_etudes", cree<page_etudes>},
};

} // namespace

std::span<const page_etabli> pages_etabli() { return table; }
