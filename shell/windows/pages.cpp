#include "shell/windows/pages.h"

#include "analysis/windows/page_bilan.h"
#include "analysis/windows/page_carte.h"
#include "widgets/page.h"

namespace {

template <class P>
page* cree(session& s) {
    return new P(s);
}

/// One line for each page: {"page_bilan", "Bilan", "page_bilan", cree<page_bilan>}.
constexpr page_etabli table[] = {
    {"page_bilan", "Bilan", "page_bilan", cree<page_bilan>},
    {"page_carte", "Carte", "page_carte", cree<page_carte>},
};

} // namespace

std::span<const page_etabli> pages_etabli() { return table; }
