#pragma once

#include <span>

namespace kelvora {

// CatalogueRow is one text of the catalogue in the four languages, keyed by its German id.
// A null text means that language has no text under this id.
struct CatalogueRow {
    int germanId;
    const char* german;
    const char* english;
    const char* spanish;
    const char* french;
};

// CatalogueRows returns every row, sorted by German id without repeats.
[[nodiscard]] std::span<const CatalogueRow> CatalogueRows();

} // namespace kelvora
