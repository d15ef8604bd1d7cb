// The search box of the reference. It looks through NAMES, rows of [name, where it stands, what it is, what is said of it],
// for all that hold every word typed, anywhere and in any case: first come names that begin with the first word, then those
// that hold it, then those of which it is said.
"use strict";

const MOST = 40;

function found(typed) {
    const words = typed.toLowerCase().split(/\s+/).filter(Boolean);
    if (words.length === 0)
        return [];
    const rank = (name) => (name === words[0] ? 0 : name.startsWith(words[0]) ? 1 : name.includes(words[0]) ? 2 : 3);
    return NAMES.map(([name, place, kind, said]) => ({ name, place, kind, said, folded: name.toLowerCase() }))
        .filter((row) => words.every((word) => row.folded.includes(word) || row.said.toLowerCase().includes(word)))
        .sort((a, b) => rank(a.folded) - rank(b.folded) || a.folded.localeCompare(b.folded));
}

function show(list, typed) {
    const rows = found(typed);
    list.replaceChildren(...rows.slice(0, MOST).map(({ name, place, kind, said }) => {
        const link = document.createElement("a");
        link.href = place;
        link.textContent = name;
        const entry = document.createElement("li");
        entry.append(link, ` ${kind}`, document.createElement("br"), said);
        return entry;
    }));
    if (rows.length > MOST || (rows.length === 0 && typed.trim() !== ""))
        list.append(Object.assign(document.createElement("li"), {
            textContent: rows.length === 0 ? "nothing of that name" : `and ${rows.length - MOST} more`,
        }));
}

document.addEventListener("DOMContentLoaded", () => {
    const box = Object.assign(document.createElement("input"), { id: "search", type: "search", placeholder: "Search names" });
    const list = Object.assign(document.createElement("ul"), { id: "found" });
    box.addEventListener("input", () => show(list, box.value));
    box.addEventListener("keydown", (event) => {
        const first = list.querySelector("a");
        if (event.key === "Enter" && first !== null)
            location.href = first.href;
    });
    const place = document.getElementById("titlearea");
    place.append(box, list);
    document.addEventListener("keydown", (event) => {
        if (event.key === "/" && document.activeElement !== box) {
            event.preventDefault();
            box.focus();
        } else if (event.key === "Escape") {
            box.value = "";
            show(list, "");
        }
    });
});
