/// The pages of the workbench beyond the start page and the summary, in the order of the rail.
#pragma once

#include <span>

#include "shell/session.h"

class page;

struct page_etabli {
    const char* nom; ///< object name of the page
    const char* titre;
    const char* icone;
    page* (*fabrique)(session&);
};

std::span<const page_etabli> pages_etabli();
