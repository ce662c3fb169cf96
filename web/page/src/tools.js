// The buttons above the view, and their keys.

import { withCamera } from "./address.js";
import { element } from "./dom.js";
import { sides } from "./eye.js";

/** @param view null without 3D graphics: then there is only what needs none */
export function makeTools(box, view, switchTheme) {
    const tools = [["T", "Theme", "Light or dark page", switchTheme]];
    if (view !== null)
        tools.unshift(
            ["F", "Fit", "Fit everything into the picture", () => view.fit()],
            ["1", "Corner", "From the south-east and above", () => view.fitFrom(sides.corner)],
            ["2", "Front", "From the south", () => view.fitFrom(sides.front)],
            ["3", "Right", "From the east", () => view.fitFrom(sides.right)],
            ["4", "Top", "From above", () => view.fitFrom(sides.top)],
            ["W", "Wireframe", "Edges alone", (button) => button.setAttribute("aria-pressed", String(view.style.switchWire()))],
            ["B", "Background", "Another background", () => view.style.nextBackground()],
            ["L", "Link", "Put this view into the address of the page", () => {
                location.hash = withCamera(location.hash, view.eye.place());
                view.tell("The address of this page now holds this view.");
            }]);
    const keys = new Map();
    const buttons = tools.map(([key, label, title, act]) => {
        const button = element("button", { type: "button", title: `${title} (${key})`, "aria-keyshortcuts": key,
            "aria-pressed": label === "Wireframe" ? "false" : undefined, click: () => act(button) }, label);
        keys.set(key.toLowerCase(), button);
        return button;
    });
    box.replaceChildren(...buttons);
    addEventListener("keydown", (event) => {
        const isTyping = event.target.matches?.("input, select, textarea") ?? false;
        if (isTyping || event.altKey || event.ctrlKey || event.metaKey)
            return;
        if (event.key === "/") {
            event.preventDefault();
            document.getElementById("search").focus();
        } else {
            keys.get(event.key.toLowerCase())?.click();
        }
    });
}
