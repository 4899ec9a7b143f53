/// Reads the results file of an attitude run back, page by page.
///
/// The file: three head lines (begin, end, step), an empty line, the names of 25 columns, then one record a
/// line. A page is at most 1000 records. The file is opened for each page, so that it may have been removed,
/// cut or replaced since the last one; each reading checks the head again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "attitude/att_resultats.h"

/// Rows of a page, and how many of them are in use; the others are zero.
struct table_att {
    std::vector<ligne_page> rangs = std::vector<ligne_page>(lignes_par_page);
    int lignes = 0;
};

class pages_resultats {
public:
    /// The file at this path, just written by `ecrivain`.
    void ouvre(const std::string& chemin, const ecrivain_resultats& ecrivain);

    /// One page, from 0. False, with the reason in `erreur`, when it cannot be read whole; the rows up to the
    /// fault stand in the table.
    bool lit_page(int64_t page, table_att& t);
    /// The whole run in one table: one record out of `pages()`, from the first.
    bool lit_ensemble(table_att& t);

    int64_t pages() const { return static_cast<int64_t>(pages_.size()); }
    /// The reason of the last failure, in the user's language; empty after a success.
    const std::string& erreur() const { return erreur_; }

private:
    bool lit(int64_t premier, int64_t pas_lecture, table_att& t);
    bool refuse(const std::string& raison);

    std::string chemin_, erreur_;
    std::vector<int64_t> pages_; ///< offset in the file of the first record of each page
    int64_t nombre_ = 0;
};
