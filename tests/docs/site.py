#!/usr/bin/env python3
"""Reads the reference with a browser, as a visitor would: the front page, a search, the page that it leads to.

    site.py SITE
"""

import pathlib
import sys

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

WANTED = "gen_find_file"
SEARCHES = {  # what is typed, and a name that has it within itself, or of which it is said
    "find_file": WANTED,
    "WILDCARD": "gen_wildcard_to_reg_expr",
    "checksum": "gen_crc_generator",
    "lap_time": "GEN_STOPWATCH::lap_time",
    "path korvane get": "gen_get_korvane_path",
    "diagnostics": "Diagnostics",
}
PICTURES = {"lookup": 1, "condition": 1, "performance": 1, "editing": 0, "reliability": 0, "fuzzing": 0, "system": 0,
            "coverage": 0, "mutation": 0} # of each page


def browser():
    options = webdriver.ChromeOptions()
    for switch in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--allow-file-access-from-files"):
        options.add_argument(switch)
    return webdriver.Chrome(options=options)


def search(driver, typed):
    """The links that the search box offers for what is typed there."""
    box = WebDriverWait(driver, 30).until(lambda page: page.find_element(By.ID, "search"))
    box.clear()
    box.send_keys(typed)
    return [link for link in driver.find_elements(By.CSS_SELECTOR, "#found a") if link.is_displayed()]


def visit(driver, site):
    """From the front page, by a search, to the entry on a name."""
    driver.get((site / "index.html").as_uri())
    WebDriverWait(driver, 30).until(lambda page: "gen" in page.title)
    for typed, wanted in SEARCHES.items():
        offered = [link.text for link in search(driver, typed)]
        if wanted not in offered:
            sys.exit(f"a search for {typed} does not offer {wanted} but {offered}")
    if search(driver, "no such name"):
        sys.exit("a search for what is not there offers something")
    if search(driver, WANTED)[0].text != WANTED:
        sys.exit(f"a search for {WANTED} does not offer it first")
    driver.find_element(By.ID, "search").send_keys(Keys.ENTER)
    WebDriverWait(driver, 30).until(lambda page: "index.html" not in page.current_url)
    anchor = driver.current_url.partition("#")[2]
    entry = driver.find_element(By.XPATH, f"//a[@id='{anchor}']/following::div[@class='memitem'][1]")
    if WANTED not in entry.text:
        sys.exit(f"{driver.current_url} does not name {WANTED}: {entry.text}")


def check_pages(driver, site):
    """The pages of docs/ are there, and every picture in them is seen."""
    for name, pictures in PICTURES.items():
        found = list(site.glob(f"md_docs_{name}*.html"))
        if len(found) != 1:
            sys.exit(f"not one page on {name}: {found}")
        driver.get(found[0].as_uri())
        images = driver.find_elements(By.CSS_SELECTOR, ".contents img, .contents object")
        if len(images) < pictures:
            sys.exit(f"{found[0].name}: {len(images)} pictures")
        for image in images:
            if image.size["width"] < 50:
                sys.exit(f"{found[0].name}: a picture is not shown")


def main(site):
    driver = browser()
    try:
        visit(driver, site)
        check_pages(driver, site)
    finally:
        driver.quit()
    print("the front page leads to", WANTED)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve())
