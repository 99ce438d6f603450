#include "preview/site_assets.h"

namespace quillet::preview {

const char* const kStylesheet = R"css(/* Stylesheet of the command reference preview. */
:root {
  color-scheme: light dark;
  --text: #1f2328;
  --muted: #59636e;
  --page: #ffffff;
  --panel: #f6f8fa;
  --rule: #d1d9e0;
  --link: #0a58ca;
  --mark: #ddf4ff;
}
@media (prefers-color-scheme: dark) {
  :root {
    --text: #e6edf3;
    --muted: #9198a1;
    --page: #0d1117;
    --panel: #151b23;
    --rule: #3d444d;
    --link: #6cb6ff;
    --mark: #1d2d3e;
  }
}
* { box-sizing: border-box; }
[hidden] { display: none !important; }
html { -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
body {
  margin: 0;
  color: var(--text);
  background: var(--page);
  font: 16px/1.6 system-ui, -apple-system, "Segoe UI", Roboto, "Noto Sans", "Helvetica Neue", Arial, sans-serif;
}
a { color: var(--link); text-underline-offset: 0.15em; }
a:not([href]) { color: inherit; text-decoration: underline dotted var(--muted); }
main { max-width: 50rem; margin: 0 auto; padding: 1rem 1.5rem 3rem; overflow-wrap: anywhere; }
h1 { font-size: 2rem; line-height: 1.2; margin: 1.5rem 0 1rem; }
code, .UserType, dt { font-family: ui-monospace, "SFMono-Regular", "DejaVu Sans Mono", Menlo, Consolas, monospace; }

/* The contents page: a sidebar of entries beside the chosen topic. */
body.contents {
  display: grid;
  grid-template-columns: minmax(15rem, 20rem) 1fr;
  grid-template-rows: minmax(0, 1fr);
  height: 100vh;
}
.sidebar {
  overflow-y: auto;
  background: var(--panel);
  border-right: 1px solid var(--rule);
  padding: 1rem 0.75rem;
}
.sidebar h1 { font-size: 1.125rem; margin: 0 0.25rem 0.75rem; }
.viewer { max-width: none; margin: 0; padding: 0; }
.viewer iframe { display: block; width: 100%; height: 100%; border: 0; }
#search {
  position: sticky;
  top: 0;
  width: 100%;
  padding: 0.5rem 0.75rem;
  font: inherit;
  color: inherit;
  background: var(--page);
  border: 1px solid var(--rule);
  border-radius: 6px;
}
#search:focus { outline: 2px solid var(--link); outline-offset: -1px; }
.matches { margin: 0.5rem 0.25rem; color: var(--muted); font-size: 0.875rem; }
#entries, #found { list-style: none; margin: 0; padding: 0; }
/* While a search is shown the contents are skipped but kept laid out, so
   that they come back at once however many they are. */
#entries.covered { content-visibility: hidden; }
#entries a, #found a {
  display: block;
  padding: 0.2rem 0.5rem;
  border-radius: 4px;
  text-decoration: none;
  font-family: ui-monospace, "SFMono-Regular", "DejaVu Sans Mono", Menlo, Consolas, monospace;
  font-size: 0.9375rem;
}
.sidebar a:hover, .sidebar a:focus, .sidebar a[aria-current] { background: var(--mark); }

/* Topic pages as quillet writes them. */
table.NavLink { width: 100%; table-layout: fixed; border-collapse: collapse; margin: 0.5rem 0; border-block: 1px solid var(--rule); }
table.NavLink td { width: 25%; padding: 0.5rem 0.25rem; }
table.NavLink td.NavCenter { width: 50%; }
td.NavLeft { text-align: left; }
td.NavCenter { text-align: center; }
td.NavRight { text-align: right; }
.NavText a { text-decoration: none; font-weight: 500; }
h1.title { font-family: ui-monospace, "SFMono-Regular", "DejaVu Sans Mono", Menlo, Consolas, monospace; }
dl > br { display: none; }
dt { margin-top: 1.5rem; font-weight: 600; }
dt i { font-style: normal; }
dd { margin: 0.25rem 0 0 1.5rem; }
dd table { border-collapse: collapse; margin-top: 0.25rem; }
dd td { padding: 0.15rem 1rem 0.15rem 0; vertical-align: top; }
dd td:first-child { color: var(--muted); white-space: nowrap; }
.UserType { background: var(--panel); border-radius: 3px; padding: 0 0.25rem; }

/* Phones: one column, the navigation stacked. */
@media (max-width: 40rem) {
  body.contents { display: block; height: auto; }
  .sidebar { border-right: 0; }
  .viewer { display: none; }
  main { padding: 0.75rem 1rem 2rem; }
  h1 { font-size: 1.6rem; }
  table.NavLink td, table.NavLink td.NavCenter { display: block; width: auto; padding: 0.25rem; text-align: left; }
  dd { margin-left: 0.75rem; }
  dd td:first-child { white-space: normal; }
}

/* Print: the text alone, as the reference would print. */
@media print {
  .screen-only, .viewer, #search, .matches { display: none !important; }
  body { color: #000; background: #fff; font: 11pt/1.45 Georgia, "Times New Roman", serif; }
  body.contents { display: block; height: auto; }
  .sidebar { background: none; border: 0; }
  main { max-width: none; padding: 0; }
  a { color: inherit; text-decoration: none; }
  dt { break-after: avoid; }
  dd { break-inside: avoid; }
  .UserType { background: none; padding: 0; }
}
@media screen { .print-only { display: none !important; } }
)css";

const char* const kSearchScript = R"js(// The search of the contents: as one types, the entries whose title, option
// names or linked aliases' names hold every word typed are listed in place
// of the contents, the first LIMIT of them, so that each key costs little
// however large the reference. A chosen entry opens in the frame beside the
// contents, where there is one on screen; Enter opens the first entry found.
(function () {
  "use strict";
  var LIMIT = 500;
  var box = document.getElementById("search");
  var matches = document.getElementById("matches");
  var contents = document.getElementById("entries");
  var found = document.getElementById("found");
  var entries = contents.children;
  var frame = document.querySelector(".viewer iframe");
  var terms = SEARCH_INDEX.map(function (text) { return text.toLowerCase(); });
  var current = null;

  function count(n) { return n + (n === 1 ? " topic" : " topics"); }

  function search() {
    var words = box.value.toLowerCase().split(/\s+/).filter(Boolean);
    if (!words.length) {
      found.hidden = true;
      contents.classList.remove("covered");
      matches.textContent = count(entries.length);
      return;
    }
    var hits = [];
    for (var i = 0; i < terms.length; i++) {
      var hit = true;
      for (var w = 0; hit && w < words.length; w++) hit = terms[i].indexOf(words[w]) !== -1;
      if (hit) hits.push(i);
    }
    var list = document.createDocumentFragment();
    for (var k = 0; k < hits.length && k < LIMIT; k++) list.appendChild(entries[hits[k]].cloneNode(true));
    found.replaceChildren(list);
    found.hidden = false;
    contents.classList.add("covered");
    matches.textContent = count(hits.length) + " of " + entries.length +
        (hits.length > LIMIT ? ", the first " + LIMIT + " shown" : "");
  }

  function mark(link) {
    if (current) current.removeAttribute("aria-current");
    current = link;
    current.setAttribute("aria-current", "page");
  }

  // False when there is no frame on screen: the link then leads to the page.
  function openInFrame(link) {
    if (!frame || frame.offsetParent === null) return false;
    frame.src = link.href;
    mark(link);
    return true;
  }

  box.addEventListener("input", search);
  box.addEventListener("keydown", function (event) {
    var first = (found.hidden ? contents : found).querySelector("a");
    if (event.key !== "Enter" || !first) return;
    if (!openInFrame(first)) window.location.href = first.href;
  });
  document.querySelector(".sidebar").addEventListener("click", function (event) {
    var link = event.target.closest("a");
    if (!link || event.ctrlKey || event.metaKey || event.shiftKey || event.altKey) return;
    if (openInFrame(link)) event.preventDefault();
  });
  if (frame) mark(entries[0].firstElementChild);
  search();
})();
)js";

}  // namespace quillet::preview
