#!/usr/bin/env python3
"""Reads the reference with a browser, as a visitor would: the front page, a search, the page that it leads to.

    site.py SITE
"""

import pathlib
import re
import sys

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

WANTED = "gen_find_file"
PICTURES = {"lookup": 1, "condition": 1, "performance": 1, "editing": 0, "reliability": 0, "fuzzing": 0, "system": 0,
            "coverage": 0, "mutation": 0} # of each page


def browser():
    options = webdriver.ChromeOptions()
    for switch in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--allow-file-access-from-files"):
        options.add_argument(switch)
    return webdriver.Chrome(options=options)


def result_of_search(driver):
    """The link that a search for WANTED offers."""
    links = driver.find_elements(By.CSS_SELECTOR, ".SRResult .SRSymbol")
    return next((link for link in links if link.is_displayed() and link.text == WANTED), None)


def visit(driver, site):
    wait = WebDriverWait(driver, 30)
    driver.get((site / "index.html").as_uri())
    wait.until(lambda page: "gen" in page.title)

    box = wait.until(lambda page: page.find_element(By.ID, "MSearchField"))
    box.click()
    for character in WANTED:
        box.send_keys(character)
    wait.until(lambda page: page.find_element(By.ID, "MSearchResultsWindow").is_displayed())
    driver.switch_to.frame(driver.find_element(By.ID, "MSearchResults"))
    link = wait.until(result_of_search)
    link.send_keys(Keys.ENTER)
    driver.switch_to.default_content()
    wait.until(lambda page: "index.html" not in page.current_url)
    anchor = driver.current_url.partition("#")[2]
    entry = driver.find_element(By.XPATH, f"//a[@id='{anchor}']/following::div[@class='memitem'][1]")
    if WANTED not in entry.text:
        sys.exit(f"{driver.current_url} does not tell of {WANTED}: {entry.text}")


def check_links(site):
    """No page leads to a file that is not there."""
    for page in site.glob("*.html"):
        for link in re.findall(r'(?:href|src)="([^"#?]+)', page.read_text(encoding="utf-8")):
            if "://" not in link and not link.startswith(("mailto:", "javascript:")) and not (site / link).exists():
                sys.exit(f"{page.name} leads to {link}, which is not there")


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
    check_links(site)
    driver = browser()
    try:
        visit(driver, site)
        check_pages(driver, site)
    finally:
        driver.quit()
    print("the front page leads to", WANTED)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve())
