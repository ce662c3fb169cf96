// Puts the page together: first what needs no 3D graphics, the names and the figures, then the view.

import { askedFor } from "./address.js";
import { embeddedModel } from "./embedded.js";
import { figuresOf } from "./figures.js";
import { descriptionOf } from "./glb.js";
import { missingSection } from "./missing.js";
import { NodeSection } from "./node.js";
import { Outline } from "./outline.js";
import { figureSection, summaryOf } from "./panel.js";
import { SearchField } from "./search.js";
import { switchTheme } from "./theme.js";
import { makeTools } from "./tools.js";
import { TreeView } from "./tree.js";
import { View } from "./view.js";

const byId = (id) => document.getElementById(id);

/** Tells how far the page is, to people and to programs: "reading", "ready", "no graphics" or "failed". */
function tell(state, notice) {
    document.body.dataset.state = state;
    byId("notice").textContent = notice;
}

async function main() {
    tell("reading", "Reading the model …");
    const asked = askedFor(location.hash);
    document.body.dataset.panels = asked.panels ? "on" : "off";
    const facts = JSON.parse(byId("facts").textContent);
    const glb = await embeddedModel();
    const description = descriptionOf(glb);
    const outline = new Outline(description);
    const figures = figuresOf(description);
    byId("summary").textContent = summaryOf(figures);

    let view = null;
    const selected = new NodeSection(description);
    const tree = new TreeView(byId("tree"), outline, {
        isShown: ({ outer }) => view?.visibility.isShown(outer) ?? true,
        show: ({ outer }, on) => view?.visibility.show([outer], on),
        select: (item) => {
            selected.show(item);
            view?.select(item.node);
        },
        fit: (item) => view?.fitNode(item.node),
    });
    new SearchField(byId("search"), byId("found"), outline, tree);
    const ends = [missingSection(facts), figureSection(figures, description)].filter((part) => part !== null);
    byId("details").replaceChildren(selected.box, ...ends);

    try {
        view = await View.open(byId("canvas"), glb, description, outline);
    } catch (problem) {
        console.warn(problem);
        byId("canvas").remove();
        makeTools(byId("tools"), null, switchTheme);
        return tell("no graphics", "This browser shows no 3D graphics (WebGL 2 is off or missing). "
            + "The names and figures are here all the same.");
    }
    tree.allowHiding();
    view.visibility.onChange(() => tree.render());
    view.onPick((node) => tree.choose(outline.itemAround(node, (number) => view.model.above(number))));
    makeTools(byId("tools"), view, switchTheme);
    byId("details").replaceChildren(selected.box, ...view.sections(), ...ends);
    view.obey(asked);
    addEventListener("hashchange", () => view.obey(askedFor(location.hash)));
    tell("ready", "");
}

main().catch((problem) => {
    console.error(problem);
    tell("failed", `The model in this page can't be shown: ${problem.message}.`);
});
