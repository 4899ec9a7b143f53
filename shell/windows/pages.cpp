#include "shell/windows/pages.h"

#include "widgets/page.h"

namespace {

template <class P>
page* cree(session& s) {
    return new P(s);
}

/// One line for each page: {"bilan", "Bilan", "page_bilan", cree<page_bilan>}.
constexpr std::span<const page_etabli> table{};

} // namespace

std::span<const page_etabli> pages_etabli() { return table; }
