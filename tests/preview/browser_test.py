#!/usr/bin/python3
"""Opens the preview site in headless Chromium and checks it as a reader would.

usage: browser_test.py example QUILLET PREVIEW DEFINITION SOURCE_TREE WORK_DIR SCREENSHOT
       browser_test.py scale QUILLET PREVIEW GENERATOR KEYWORDS WORK_DIR

example: the reference of DEFINITION (aliases below SOURCE_TREE) as a site:
  every link, stylesheet and script of every page resolves to a file of the
  site; following "next" from the first topic visits every topic in contents
  order; typing an option name or an alias into the search box leaves the
  right entries; a screenshot of the search is saved.
scale: a generated reference of KEYWORDS keywords: the search answers each
  query, the page drawn again, within MAX_SEARCH_SECONDS (best of three, as
  the machine is shared).

Exits 77 (skipped) when Chromium, its driver or Selenium is missing.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import urllib.parse
import urllib.request

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.keys import Keys
except ImportError:
    webdriver = None

SKIPPED = 77
CHROMIUM = "/usr/bin/chromium"
CHROMEDRIVER = "/usr/bin/chromedriver"
MAX_SEARCH_SECONDS = 0.5
SEARCH_LIMIT = 500  # entries listed at most for one search
# The network is closed here: nothing may reach for it.
CHROMIUM_FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                  "--disable-background-networking", "--disable-component-update", "--disable-sync",
                  "--hide-scrollbars"]


def check(condition, message):
    if not condition:
        print("FAILED: " + message)
        sys.exit(1)


def start_chromium(profile):
    missing = [path for path in (CHROMIUM, CHROMEDRIVER) if not os.access(path, os.X_OK)]
    if webdriver is None:
        missing.append("python3-selenium")
    if missing:
        print("SKIPPED: the browser test needs Chromium (Debian: chromium chromium-driver python3-selenium); "
              "missing: " + ", ".join(missing))
        sys.exit(SKIPPED)
    options = webdriver.ChromeOptions()
    options.binary_location = CHROMIUM
    for flag in CHROMIUM_FLAGS + ["--user-data-dir=" + profile]:
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(service=Service(CHROMEDRIVER), options=options)
    driver.set_window_size(1200, 800)
    return driver


def run(command, cwd, stdin=None, env=None):
    data = pathlib.Path(stdin).read_bytes() if stdin else b""
    result = subprocess.run(command, cwd=cwd, input=data, env=env, capture_output=True)
    check(result.returncode == 0,
          "%s exited with %d:\n%s" % (" ".join(command), result.returncode, result.stderr.decode(errors="replace")))


def build_site(quillet, preview, definition, source_tree, work):
    """quillet -html into WORK/reference, quillet-preview into WORK/site."""
    shutil.rmtree(work, ignore_errors=True)
    reference = os.path.join(work, "reference")
    os.makedirs(reference)
    run([quillet, "-html"], reference, stdin=definition, env=dict(os.environ, VELLUM_SRC=source_tree))
    site = os.path.join(work, "site")
    run([preview, reference, site], work)
    with open(os.path.join(reference, "Commands.fltoc"), encoding="utf-8") as contents:
        titles = re.findall(r'Title="([^"]*)"', contents.read())
    return site, titles


def page_url(path):
    return urllib.parse.urljoin("file:", urllib.request.pathname2url(os.path.abspath(path)))


def file_of(url):
    parsed = urllib.parse.urlparse(url)
    check(parsed.scheme == "file", "a link leaves the site: " + url)
    return urllib.request.url2pathname(parsed.path)


def visible_entries(driver):
    """The entries listed: the contents, or the entries found while a search is shown."""
    return driver.execute_script(
        "const found = document.getElementById('found');"
        "return Array.from((found.hidden ? document.getElementById('entries') : found).children,"
        " li => li.textContent);")


def check_links(driver, site, urls):
    """Every link, stylesheet and script of every page names a file of the site."""
    site_root = os.path.realpath(site)
    for url in urls:
        driver.get(url)
        targets = driver.execute_script(
            "return Array.from(document.querySelectorAll('a[href], link[href], script[src]'),"
            " e => e.href || e.src);")
        for target in targets:
            path = os.path.realpath(file_of(target))
            check(path.startswith(site_root + os.sep) and os.path.isfile(path),
                  "%s links to %s, which is no file of the site" % (url, target))
        text = driver.find_element("tag name", "body").text
        check("PREV_KEYWORD" not in text and "NEXT_KEYWORD" not in text, url + " shows a placeholder")
        madcap = driver.execute_script(
            "return Array.from(document.getElementsByTagName('*')).filter(e => e.tagName.includes(':')).length;")
        check(madcap == 0, "%s keeps %d MadCap elements" % (url, madcap))
        errors = [entry for entry in driver.get_log("browser") if entry["level"] == "SEVERE"]
        check(not errors, "%s logs errors: %s" % (url, errors))


def check_next_chain(driver, first_url, titles):
    """Follows "next" from the first topic, clicking as a reader would."""
    driver.get(first_url)
    visited = []
    while True:
        visited.append(driver.find_element("css selector", "h1.title").text)
        check(len(visited) <= len(titles), "next leads on past the last topic: %s" % visited)
        previous = driver.find_elements("css selector", "td.NavLeft a")
        expected_previous = [titles[len(visited) - 2]] * 2 if len(visited) > 1 else []
        check([link.text for link in previous] == expected_previous,
              "%s: previous links %s" % (visited[-1], [link.text for link in previous]))
        following = driver.find_elements("css selector", "td.NavRight a")
        if not following:
            break
        following[0].click()
    check(visited == titles, "next visits %s, the contents list %s" % (visited, titles))


def frame_shows(driver, expected):
    """Waits for the frame of index.html to show the topic `expected`; returns what it shows."""
    deadline = time.time() + 10
    while True:
        driver.switch_to.frame("topic")
        try:
            headings = driver.find_elements("css selector", "h1.title")
            title = headings[0].text if headings else None
        finally:
            driver.switch_to.default_content()
        if title == expected or time.time() > deadline:
            return title
        time.sleep(0.1)


def search(driver, text):
    box = driver.find_element("id", "search")
    box.send_keys(Keys.CONTROL + "a" + Keys.NULL, Keys.BACKSPACE)
    box.send_keys(text)
    return visible_entries(driver)


def example(quillet, preview, definition, source_tree, work, screenshot):
    site, titles = build_site(quillet, preview, definition, source_tree, work)
    driver = start_chromium(tempfile.mkdtemp(prefix="chromium-", dir=work))
    try:
        index = page_url(os.path.join(site, "index.html"))
        driver.get(index)
        check(visible_entries(driver) == titles,
              "the contents show %s, Commands.fltoc lists %s" % (visible_entries(driver), titles))
        topics = driver.execute_script("return Array.from(document.querySelectorAll('#entries a'), a => a.href);")
        check_links(driver, site, [index] + topics)
        print("links: %d pages, every link resolves" % (1 + len(topics)))
        check_next_chain(driver, topics[0], titles)
        print("next: %d topics in contents order" % len(titles))

        driver.get(index)
        for query, expected in (("eccentricity", ["add"]), ("look", ["camera", "look"]), ("ECC", ["add"])):
            shown = search(driver, query)
            check(shown == expected, "search %r shows %s, not %s" % (query, shown, expected))
        shown = search(driver, "")
        check(shown == titles, "an empty search shows %s" % shown)
        print("search: option and alias names find their keywords")

        # A chosen entry opens in the frame beside the contents.
        driver.find_element("link text", "camera").click()
        shown = frame_shows(driver, "camera")
        check(shown == "camera", "a click on camera shows %s" % shown)
        check(driver.current_url == index, "a click on camera left the contents for " + driver.current_url)
        search(driver, "eccentricity")
        driver.find_element("id", "search").send_keys(Keys.ENTER)
        shown = frame_shows(driver, "add")
        check(shown == "add", "Enter on a search for eccentricity shows %s" % shown)
        driver.save_screenshot(screenshot)
        print("frame: clicks and Enter open topics beside the contents; screenshot " + screenshot)
    finally:
        driver.quit()


def scale(quillet, preview, generator, keywords, work):
    shutil.rmtree(work, ignore_errors=True)
    data = os.path.join(work, "data")
    aliases = os.path.join(data, "orrery-src", "data", "res", "alias.cmd")
    os.makedirs(os.path.dirname(aliases))
    definition = os.path.join(data, "definition.def")
    run([sys.executable, generator, str(keywords), definition, aliases], work)
    site, titles = build_site(quillet, preview, definition, data, os.path.join(work, "run"))
    driver = start_chromium(tempfile.mkdtemp(prefix="chromium-", dir=work))
    try:
        driver.get(page_url(os.path.join(site, "index.html")))
        keyword = "cmd%d" % (keywords // 2 + 7)
        # From a first query to a second one, with what the second lists and
        # says: one keyword; the first of every keyword, found by a shared
        # option name; all entries again.
        cases = ((("", keyword), [keyword], "1 topic of %d" % len(titles)),
                 (("", "opt3"), SEARCH_LIMIT, "%d topics of %d, the first %d shown" % (keywords, len(titles),
                                                                                    SEARCH_LIMIT)),
                 ((keyword, ""), len(titles), "%d topics" % len(titles)))
        for (before, query), listed, status in cases:
            seconds = min(timed_search(driver, before, query) for _ in range(3))
            shown = visible_entries(driver)
            said = driver.find_element("id", "matches").text
            check(shown == listed if isinstance(listed, list) else len(shown) == listed,
                  "search %r lists %d entries: %s" % (query, len(shown), shown[:10]))
            check(said == status, "search %r says %r" % (query, said))
            print("search %r after %r: %s, in %.3f s (best of 3)" % (query, before, said, seconds))
            check(seconds < MAX_SEARCH_SECONDS, "search %r took %.3f s" % (query, seconds))
    finally:
        driver.quit()


def timed_search(driver, before, query):
    """Seconds from the input event of `query` until the frame after it is drawn."""
    return driver.execute_async_script("""
        const [before, query, done] = arguments;
        const box = document.getElementById("search");
        box.value = before;
        box.dispatchEvent(new Event("input"));
        requestAnimationFrame(() => setTimeout(() => {
            const start = performance.now();
            box.value = query;
            box.dispatchEvent(new Event("input"));
            requestAnimationFrame(() => setTimeout(() => done((performance.now() - start) / 1000), 0));
        }, 0));
    """, before, query)


def main(argv):
    if len(argv) == 8 and argv[1] == "example":
        example(*map(os.path.abspath, argv[2:]))
    elif len(argv) == 7 and argv[1] == "scale":
        path = os.path.abspath
        scale(path(argv[2]), path(argv[3]), path(argv[4]), int(argv[5]), path(argv[6]))
    else:
        print(__doc__)
        return 2
    print("passed")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
