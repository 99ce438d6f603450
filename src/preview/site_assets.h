#pragma once

namespace quillet::preview {

// preview.css: the one stylesheet of every page, for screens wide and
// narrow and for print.
extern const char* const kStylesheet;

// search.js: filters the contents of index.html as one types.
extern const char* const kSearchScript;

}  // namespace quillet::preview
