"use strict";

// Helper pages and lists: what a link leads to is unfolded, what is printed too but for long lists of trials, and lists are
// searched.

function unfold() {
    const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    const folded = target?.closest("details:not([open])");
    if (!folded) return;
    folded.open = true;
    target.scrollIntoView();
}
addEventListener("hashchange", unfold);
addEventListener("beforeprint", () => {
    for (const folded of document.querySelectorAll("details:not(.proof)")) folded.open = true;
});
unfold();

const find = document.getElementById("find");
if (find) {
    const plain = (text) => text.toLowerCase().replace(/[.\-]/g, "");
    const rows = [...document.querySelectorAll("tr[data-search]")].map((row) => ({
        row,
        text: plain(`${row.textContent} ${row.dataset.search}`),
    }));
    const search = () => {
        const words = plain(find.value).split(/\s+/).filter(Boolean);
        let count = 0;
        for (const { row, text } of rows) {
            row.hidden = !words.every((word) => text.includes(word));
            count += row.hidden ? 0 : 1;
        }
        for (const section of document.querySelectorAll("main section")) {
            section.hidden = !section.querySelector("tr[data-search]:not([hidden])");
        }
        document.getElementById("found").textContent = words.length === 0 ? "" : `${count} found.`;
    };
    find.form.addEventListener("submit", (event) => event.preventDefault());
    find.addEventListener("input", search);
    find.form.hidden = false;
}
