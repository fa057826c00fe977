"use strict";

// The plan of the example film for a container and codecs, as the planner made it.

const { input, labels, containers, plans, items } = window.examplePlans;
const fields = ["container", "video", "audio"].map((id) => document.getElementById(id));
const [containerField, videoField, audioField] = fields;

function make(name, attributes = {}, ...content) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
    element.append(...content);
    return element;
}

function fill(field, names, none) {
    const before = field.value;
    field.replaceChildren(...names.map((name, i) =>
        make("option", { value: name }, name === "" ? none : i === 0 && field !== containerField ? `${name} (default)` : name)));
    field.disabled = names.length === 1 && names[0] === "";
    field.value = names.includes(before) ? before : names[0];
}

function fillCodecs() {
    const { video, audio } = containers[containerField.value];
    fill(videoField, video, "takes no video");
    fill(audioField, audio, "takes no audio");
}

function chosenPlan() {
    const { video, audio, plans: numbers } = containers[containerField.value];
    return plans[numbers[video.indexOf(videoField.value) * audio.length + audio.indexOf(audioField.value)]];
}

const headings = { video: "Video", audio: "Audio", subtitle: "Subtitles" };

function settingRow(path, value, choices, corrections) {
    const [label, unit] = labels[path.split("/").at(-1)] ?? ["", ""];
    const correction = corrections.get(path);
    const reason = correction ? `Corrected from ${correction[1] ?? "nothing"}: ${correction[3]}` : choices.get(path)?.[2] ?? "";
    return make("tr", { class: correction ? "corrected" : reason ? "told" : "" },
        make("th", { scope: "row" }, label ? `${label} ` : "", make("code", {}, path)),
        make("td", { "data-label": "Value" }, unit ? `${value} ${unit}` : value),
        make("td", reason ? { "data-label": "Why" } : {}, reason));
}

function table(heads, rows, name) {
    const head = make("tr", {}, ...heads.map((text) => make("th", { scope: "col" }, text)));
    return make("div", { class: "scroll", role: "group", tabindex: "0", "aria-label": name },
        make("table", {}, make("thead", {}, head), make("tbody", {}, ...rows)));
}

function stream(planned, plan) {
    const below = (list) => new Map(list.map((number) => items[number])
        .filter(([path]) => path.startsWith(`${planned.path}/`))
        .map((entry) => [entry[0].slice(planned.path.length + 1), entry]));
    const choices = below(plan.choices);
    const corrections = below(plan.corrections);
    const how = planned.copied ? "copied as it is" : planned.encoder ? `encoder ${planned.encoder}` : "this FFmpeg has no encoder for it";
    const rows = planned.settings.map((number) => settingRow(...items[number], choices, corrections));
    const name = `${headings[planned.kind]}: ${planned.codec}`;
    return make("section", {}, make("h2", {}, `${name}, from stream ${planned.from}, ${how}`),
        table(["Setting", "Value", "Why"], rows, name));
}

function told(heading, entries, listed = "ul") {
    if (entries.length === 0) return [];
    return [make("section", {}, make("h2", {}, heading), make(listed, {}, ...entries.map((entry) => make("li", {}, entry))))];
}

function show() {
    const plan = chosenPlan();
    const target = document.getElementById("plan");
    const summary = document.getElementById("summary");
    if (plan.refused) {
        const [message, cause, wayOut] = plan.refused;
        summary.textContent = `Refused: ${message}`;
        target.replaceChildren(...told("Why", [cause, wayOut].filter(Boolean)));
        return;
    }
    const streams = plan.streams.map((number) => items[number]);
    const count = plan.corrections.length;
    const corrected = count === 0 ? "nothing had to be corrected" : `${count} ${count === 1 ? "value" : "values"} corrected`;
    summary.textContent = `${containerField.value} with ${streams.map(({ codec }) => codec).join(", ")}: ${corrected}.`;
    const paths = streams.map(({ path }) => `${path}/`);
    const rest = (list) => list.map((number) => items[number]).filter(([path]) => !paths.some((one) => path.startsWith(one)));
    const others = rest(plan.corrections).map(([path, before, after, reason]) => `${path}: ${before ?? "nothing"} becomes ${after ?? "nothing"}. ${reason}`);
    const command = (line) => make("pre", { tabindex: "0" }, make("code", {}, line));
    target.replaceChildren(
        ...told("Left out, or otherwise worth knowing", plan.notes.map((number) => items[number])),
        ...told("Corrections of the file", others),
        ...streams.map((planned) => stream(planned, plan)),
        make("section", {}, make("h2", {}, "To do it"), command(plan.convert), make("p", { class: "hint" }, "or by ffmpeg alone:"),
            ...plan.commands.map(command)));
}

function readAddress() {
    const [container, ...codecs] = decodeURIComponent(location.hash.slice(1)).split("/");
    if (!(container in containers)) return;
    containerField.value = container;
    fillCodecs();
    for (const codec of codecs) {
        for (const field of [videoField, audioField]) {
            if ([...field.options].some(({ value }) => value === codec)) field.value = codec;
        }
    }
}

document.getElementById("film").textContent = input.join("\n");
fill(containerField, Object.keys(containers), "");
containerField.value = "mp4";
fillCodecs();
readAddress();
containerField.addEventListener("change", fillCodecs);
document.getElementById("choose").addEventListener("change", () => {
    history.replaceState(null, "", `#${fields.map(({ value }) => value).filter(Boolean).join("/")}`);
    show();
});
document.getElementById("choose").addEventListener("submit", (event) => event.preventDefault());
addEventListener("hashchange", () => { readAddress(); show(); });
document.getElementById("planner").hidden = false;
show();
