// The tree of names: a list of rows of which only those in sight are elements, so that a hundred thousand nodes are
// as quick as ten.

import { element } from "./dom.js";

const rowHeight = 28; // Pixels, as in the style sheet.
const rowsAtFirst = 40; // So many are open when the page comes up, if there are levels that fit.

export class TreeView {
    /**
     * @param box the element of role "tree"
     * @param actions {isShown(item), show(item, on), select(item), fit(item)}
     */
    constructor(box, outline, actions) {
        this.box = box;
        this.outline = outline;
        this.actions = actions;
        this.open = new Set();
        this.rows = [];
        this.filter = null;
        this.active = null;
        this.canHide = false;
        this.list = element("div", { class: "rows", role: "presentation" });
        box.append(this.list);
        box.addEventListener("scroll", () => this.render());
        box.addEventListener("keydown", (event) => this.take(event));
        box.addEventListener("click", (event) => this.click(event));
        box.addEventListener("dblclick", (event) => this.rowAt(event) && this.actions.fit(this.active));
        new ResizeObserver(() => this.render()).observe(box);
        this.openFirst();
        this.update();
    }

    openFirst() {
        let level = this.outline.top.children;
        let rows = level.length;
        while (level.length > 0) {
            const next = level.flatMap((item) => item.children);
            if (next.length === 0 || rows + next.length > rowsAtFirst)
                break;
            level.forEach((item) => this.open.add(item));
            rows += next.length;
            level = next;
        }
    }

    /** Shows what a search found, or everything: null. */
    setFilter(filter) {
        this.filter = filter;
        this.box.scrollTop = 0;
        this.update();
    }

    isOpen(item) {
        return item.children.length > 0 && (this.filter !== null ? this.filter.shown.has(item) : this.open.has(item));
    }

    /** After rows have come or gone. */
    update() {
        this.rows = [];
        const waiting = [...this.outline.top.children].reverse();
        while (waiting.length > 0) {
            const item = waiting.pop();
            if (this.filter !== null && !this.filter.shown.has(item))
                continue;
            this.rows.push(item);
            if (this.isOpen(item))
                for (let child = item.children.length; child-- > 0;)
                    waiting.push(item.children[child]);
        }
        this.list.style.height = `${this.rows.length * rowHeight}px`;
        this.render();
    }

    /** Draws the rows in sight. */
    render() {
        const first = Math.max(0, Math.floor(this.box.scrollTop / rowHeight) - 5);
        const last = Math.min(this.rows.length, Math.ceil((this.box.scrollTop + this.box.clientHeight) / rowHeight) + 5);
        const rows = [];
        for (let row = first; row < last; ++row)
            rows.push(this.rowOf(this.rows[row], row));
        this.list.replaceChildren(...rows);
        const isActiveThere = this.active !== null && this.list.querySelector("[aria-selected=true]") !== null;
        if (isActiveThere)
            this.box.setAttribute("aria-activedescendant", `row-${this.active.node}`);
        else
            this.box.removeAttribute("aria-activedescendant");
    }

    rowOf(item, row) {
        const shown = this.actions.isShown(item);
        const siblings = item.parent.children;
        const made = element("div", {
            id: `row-${item.node}`, role: "treeitem", class: this.classOf(item, shown),
            "aria-level": item.depth + 1, "aria-selected": String(item === this.active),
            "aria-expanded": item.children.length > 0 ? String(this.isOpen(item)) : undefined,
            "aria-checked": this.canHide ? String(shown) : undefined,
            "aria-setsize": siblings.length, "aria-posinset": item.place, "data-row": row,
        },
        element("span", { class: "twisty", "aria-hidden": "true" }),
        this.canHide ? element("span", { class: "check", "aria-hidden": "true" }) : "",
        element("span", { class: "name", title: item.name }, item.name),
        item.kind === "group" ? "" : element("span", { class: `kind ${item.kind}` }, item.kind));
        made.style.top = `${row * rowHeight}px`;
        made.style.paddingInlineStart = `${6 + Math.min(item.depth, 30) * 14}px`;
        return made;
    }

    classOf(item, shown) {
        const found = this.filter !== null && this.filter.found.has(item);
        return `row${shown && this.isWithin(item) ? "" : " away"}${found ? " found" : ""}`;
    }

    /** Whether all that stands above an item is shown. */
    isWithin(item) {
        for (let above = item.parent; above !== this.outline.top; above = above.parent)
            if (!this.actions.isShown(above))
                return false;
        return true;
    }

    /** Gives each row a box to tick: there is a view. */
    allowHiding() {
        this.canHide = true;
        this.render();
    }

    /** Goes to the first item that a search found. */
    chooseFound() { this.choose(this.rows.find((item) => this.filter?.found.has(item) ?? true)); }

    rowAt(event) {
        const row = event.target.closest?.("[data-row]");
        return row === null || row === undefined ? undefined : this.rows[Number(row.dataset.row)];
    }

    click(event) {
        const item = this.rowAt(event);
        if (item === undefined)
            return;
        if (event.target.className === "twisty")
            this.toggle(item);
        else if (event.target.className === "check")
            this.actions.show(item, !this.actions.isShown(item));
        else
            this.choose(item);
    }

    toggle(item) {
        if (this.filter === null && !this.open.delete(item))
            this.open.add(item);
        this.update();
    }

    /** Makes an item the selected one, without telling anybody. */
    mark(item) {
        this.active = item;
        if (item === null)
            return this.render();
        for (let above = item.parent; above !== null; above = above.parent)
            this.open.add(above);
        if (this.filter !== null && !this.filter.shown.has(item))
            this.filter = null;
        this.update();
        const row = this.rows.indexOf(item);
        const top = row * rowHeight;
        if (top < this.box.scrollTop)
            this.box.scrollTop = top;
        else if (top + rowHeight > this.box.scrollTop + this.box.clientHeight)
            this.box.scrollTop = top + rowHeight - this.box.clientHeight;
        this.render();
    }

    choose(item) {
        if (item === undefined)
            return;
        this.mark(item);
        this.actions.select(item);
    }

    take(event) {
        if (event.altKey || event.ctrlKey || event.metaKey)
            return;
        const key = this.keys[event.key];
        if (key === undefined || this.rows.length === 0)
            return;
        event.preventDefault();
        event.stopPropagation();
        key.call(this, this.rows.indexOf(this.active));
    }

    keys = {
        ArrowDown(row) { this.choose(this.rows[Math.min(row + 1, this.rows.length - 1)]); },
        ArrowUp(row) { this.choose(this.rows[Math.max(row - 1, 0)]); },
        Home() { this.choose(this.rows[0]); },
        End() { this.choose(this.rows[this.rows.length - 1]); },
        PageDown(row) { this.choose(this.rows[Math.min(row + this.page(), this.rows.length - 1)]); },
        PageUp(row) { this.choose(this.rows[Math.max(row - this.page(), 0)]); },
        ArrowRight(row) {
            const item = this.rows[row];
            if (item === undefined || item.children.length === 0)
                return;
            if (this.isOpen(item))
                this.choose(this.rows[row + 1]);
            else
                this.toggle(item);
        },
        ArrowLeft(row) {
            const item = this.rows[row];
            if (item === undefined)
                return;
            if (this.isOpen(item) && this.filter === null)
                this.toggle(item);
            else if (item.parent !== this.outline.top)
                this.choose(item.parent);
        },
        " "() { this.active !== null && this.actions.show(this.active, !this.actions.isShown(this.active)); },
        Enter() { this.active !== null && this.actions.fit(this.active); },
    };

    page() { return Math.max(1, Math.floor(this.box.clientHeight / rowHeight) - 1); }
}
