"use strict";

// The matrix: filters, one stop of the Tab key a table, and the reason of a mark without leaving the page.

const filters = document.getElementById("filters");
const answer = document.getElementById("answer");

/** As people write names: "H.265" and "h265" are one. */
const plain = (text) => text.toLowerCase().replace(/[.\-]/g, "");

const asked = (id) => plain(document.getElementById(id).value).split(/[\s,]+/).filter(Boolean);

const matches = (element, words) => {
    const searched = plain(element.dataset.search);
    return words.length === 0 || words.some((word) => searched.includes(word));
};

const isTaken = (cell) => !cell.classList.contains("refused");

/** One table, read once. */
const tables = [...document.querySelectorAll("section.kind")].map((section) => ({
    section,
    columns: [...section.querySelectorAll("thead th[data-search]")],
    rows: [...section.querySelectorAll("tbody tr")].map((row) => ({
        row,
        cells: row.dataset.only === undefined ? [...row.cells].slice(1) : [],
        only: row.dataset.only,
    })),
    none: section.querySelector(".none"),
}));

function filter() {
    const containers = asked("container");
    const codecs = asked("codec");
    const kind = document.getElementById("kind").value;
    const takenOnly = document.getElementById("taken").checked;
    const shown = { containers: new Set(), codecs: 0 };
    for (const { section, columns, rows, none } of tables) {
        section.hidden = kind !== "" && section.dataset.kind !== kind;
        const isColumn = columns.map((column) => matches(column, codecs));
        const places = columns.map((column) => column.textContent);
        const isRow = rows.map(({ row, cells, only }) => {
            if (!matches(row, containers)) return false;
            const takes = only !== undefined ? isColumn[places.indexOf(only)] : cells.some((cell, i) => isColumn[i] && isTaken(cell));
            return takes || (!takenOnly && (only === undefined || codecs.length === 0));
        });
        if (takenOnly) {
            columns.forEach((column, i) => {
                const isUsed = rows.some(({ cells, only }, r) => isRow[r] && (only !== undefined ? only === places[i] : isTaken(cells[i])));
                isColumn[i] = isColumn[i] && isUsed;
            });
        }
        const width = isColumn.filter(Boolean).length;
        columns.forEach((column, i) => { column.hidden = !isColumn[i]; });
        rows.forEach(({ row, cells, only }, r) => {
            row.hidden = !isRow[r] || width === 0;
            if (only !== undefined) row.cells[1].colSpan = Math.max(width, 1);
            cells.forEach((cell, i) => { cell.hidden = !isColumn[i]; });
            if (!row.hidden && !section.hidden) shown.containers.add(row.cells[0].textContent);
        });
        if (none) none.hidden = takenOnly || containers.length + codecs.length > 0;
        const isEmpty = rows.every(({ row }) => row.hidden);
        section.hidden ||= isEmpty;
        if (!section.hidden) shown.codecs += width;
        makeOneStop(section);
    }
    const isFiltered = containers.length + codecs.length > 0 || kind !== "" || takenOnly;
    const count = (n, what) => `${n} ${what}${n === 1 ? "" : "s"}`;
    document.getElementById("found").textContent =
        !isFiltered ? "" :
        shown.containers.size === 0 ? "Nothing of that name, or nothing that fits." :
        `Shown: ${count(shown.containers.size, "container")}, ${count(shown.codecs, "codec")}.`;
}

const shownCells = (row) => [...row.cells].slice(1).filter((cell) => !cell.hidden);

/** The Tab key enters a table once; within it the arrows move. */
function makeOneStop(section, link = section.querySelector("tbody tr:not([hidden]) td:not([hidden]) a")) {
    for (const other of section.querySelectorAll("td a")) other.tabIndex = -1;
    if (link) link.tabIndex = 0;
}

function move(event) {
    const cell = event.target.closest("td");
    if (!cell) return;
    const row = cell.parentElement;
    const rows = [...cell.closest("table").querySelectorAll("tbody tr:not([hidden])")];
    const cells = shownCells(row);
    const place = cells.indexOf(cell);
    const below = (step) => {
        const next = rows[rows.indexOf(row) + step];
        return next && shownCells(next)[Math.min(place, shownCells(next).length - 1)];
    };
    const targets = {
        ArrowRight: () => cells[place + 1],
        ArrowLeft: () => cells[place - 1],
        ArrowDown: () => below(1),
        ArrowUp: () => below(-1),
        Home: () => cells[0],
        End: () => cells.at(-1),
    };
    if (!(event.key in targets) || event.ctrlKey || event.metaKey || event.altKey) return;
    event.preventDefault();
    const link = targets[event.key]()?.querySelector("a");
    if (!link) return;
    makeOneStop(cell.closest("section"), link);
    link.focus();
}

function linkTo(href, text) {
    const item = document.createElement("li");
    const link = item.appendChild(document.createElement("a"));
    link.href = href;
    link.textContent = text;
    return item;
}

function explain(link) {
    const cell = link.closest("td");
    const container = cell.parentElement.cells[0].querySelector("a");
    const column = cell.closest("table").querySelector("thead tr").cells[cell.cellIndex].querySelector("a");
    const standing = [...document.querySelectorAll(".legend .mark")].find((mark) => cell.classList.contains(mark.classList[1]));
    const set = (part, text) => { document.getElementById(`answer-${part}`).textContent = text; };
    set("title", `${column.textContent} in ${container.textContent}`);
    const name = standing.classList[1];
    set("standing", `${name[0].toUpperCase()}${name.slice(1)}: ${standing.closest("div").querySelector("dd").textContent}.`);
    set("why", link.dataset.why ? `Why: ${link.dataset.why}.` : "");
    set("proof", link.dataset.proof ?? "");
    const links = document.getElementById("answer-links");
    links.replaceChildren(
        linkTo(link.href, `All that ${container.textContent} takes`),
        linkTo(column.href, `The sheet of ${column.textContent}, and the containers that take it`));
    const kind = cell.closest("section").dataset.kind;
    if (kind !== "subtitles" && ["default", "offered"].includes(name)) {
        links.append(linkTo(`plan.html#${container.textContent}/${column.textContent}`, "Plan a conversion with it"));
    }
    answer.showModal();
}

for (const { section } of tables) {
    const readout = section.appendChild(document.createElement("p"));
    readout.className = "readout";
    readout.setAttribute("aria-hidden", "true");
    const read = (event) => {
        const link = event.target.closest("td:not(.only)")?.querySelector("a");
        const label = link?.getAttribute("aria-label") ?? "";
        readout.textContent = link?.dataset.why ? `${label}, ${link.dataset.why}` : label;
    };
    const table = section.querySelector("table");
    table.addEventListener("pointerover", read);
    table.addEventListener("focusin", read);
    table.addEventListener("pointerleave", () => { readout.textContent = ""; });
    table.addEventListener("keydown", move);
    table.addEventListener("click", (event) => {
        const link = event.target.closest("td:not(.only) a");
        if (!link || event.ctrlKey || event.metaKey || event.shiftKey) return;
        event.preventDefault();
        makeOneStop(section, link);
        explain(link);
    });
}
answer.addEventListener("click", (event) => { if (event.target === answer) answer.close(); });
filters.addEventListener("input", filter);
filters.addEventListener("submit", (event) => event.preventDefault());
filters.hidden = false;
document.getElementById("readout").textContent =
    "Every mark tells its reason when you choose it. In a table the arrow keys move.";
filter();
