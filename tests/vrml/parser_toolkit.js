// The few parts of a parser toolkit that three.js's VRMLLoader is written for, and that Debian doesn't have: tokens
// by regular expressions, and a parser that goes down the rules of a grammar. It knows nothing of VRML.
"use strict";

const skipped = "skipped";

function createToken(options) {
    return { ...options, matcher: new RegExp(options.pattern.source, "y") };
}

class Lexer {
    constructor(tokens) {
        this.tokens = tokens;
    }

    // The first token that matches counts, or its longer alternative if that matches more.
    tokenize(text) {
        const result = { tokens: [], errors: [] };
        const match = (token, at) => {
            token.matcher.lastIndex = at;
            const found = token.matcher.exec(text);
            return found === null ? "" : found[0];
        };
        for (let at = 0; at < text.length;) {
            let image = "";
            let type = this.tokens.find((token) => (image = match(token, at)) !== "");
            if (type === undefined) {
                result.errors.push(`unexpected characters: ${JSON.stringify(text.slice(at, at + 40))}`);
                return result;
            }
            const longer = type.longer_alt === undefined ? "" : match(type.longer_alt, at);
            if (longer.length > image.length)
                [type, image] = [type.longer_alt, longer];
            if (type.group !== skipped)
                result.tokens.push({ type, image });
            at += image.length;
        }
        return result;
    }
}
Lexer.SKIPPED = skipped;

const mismatch = { name: "the next token is another one" };

class Parser {
    constructor() {
        this.errors = [];
        this.input = [];
        this.at = 0;
        this.current = null;
        this.vain = new Map(); // What didn't even begin with a token: it never does.
        this.furthest = 0;
    }

    performSelfAnalysis() {}

    RULE(name, body) {
        this[name] = () => {
            const above = this.current;
            const node = (this.current = { name, children: {} });
            try {
                body();
            } catch (problem) {
                if (above !== null || problem !== mismatch)
                    throw problem;
                this.errors.push(`unexpected ${this.words(this.furthest)}`);
            } finally {
                this.current = above;
            }
            if (above === null && this.errors.length === 0 && this.at < this.input.length)
                this.errors.push(`more than expected: ${this.words(this.furthest)}`);
            return node;
        };
        this[name].ruleName = name;
    }

    words(at) {
        return this.input.slice(Math.max(0, at - 5), at + 5).map((token) => token.image).join(" ");
    }

    keep(name, part) {
        (this.current.children[name] ??= []).push(part);
    }

    SUBRULE(rule) {
        this.keep(rule.ruleName, rule());
    }

    CONSUME(type) {
        if (this.at >= this.input.length || this.input[this.at].type !== type)
            throw mismatch;
        this.keep(type.name, this.input[this.at]);
        this.furthest = Math.max(this.furthest, ++this.at);
    }

    CONSUME2(type) {
        this.CONSUME(type);
    }

    // Whether a part of a rule is there. It is known by its place in the rule.
    takes(place, body) {
        const begin = this.at;
        const type = begin < this.input.length ? this.input[begin].type : null;
        const key = `${this.current.name} ${place}`;
        let vain = this.vain.get(key);
        if (vain === undefined)
            this.vain.set(key, (vain = new Set()));
        if (vain.has(type))
            return false;
        const lengths = Object.entries(this.current.children).map(([name, list]) => [name, list.length]);
        const before = Object.fromEntries(lengths);
        const node = this.current;
        try {
            body();
            return true;
        } catch (problem) {
            if (problem !== mismatch)
                throw problem;
            if (this.at === begin)
                vain.add(type);
            this.current = node;
            for (const [name, list] of Object.entries(node.children))
                list.length = before[name] ?? 0;
            this.at = begin;
            return false;
        }
    }

    OPTION(body) {
        this.takes("option", body);
    }

    MANY(body) {
        while (this.takes("many", body));
    }

    AT_LEAST_ONE(body) {
        if (!this.takes("many", body))
            throw mismatch;
        this.MANY(body);
    }

    OR(alternatives) {
        if (!alternatives.some((alternative, i) => this.takes(`or ${i}`, alternative.ALT)))
            throw mismatch;
    }

    OR2(alternatives) {
        this.OR(alternatives);
    }

    getBaseCstVisitorConstructor() {
        return Visitor;
    }
}

// Both are called as functions, as the loader does, which classes can't be.
function Visitor() {}
Visitor.prototype.validateVisitor = () => {};
Visitor.prototype.visit = function (node) {
    const one = Array.isArray(node) ? node[0] : node;
    return one === undefined ? undefined : this[one.name](one.children);
};

function CallableParser() {
    Object.assign(this, new Parser());
}
CallableParser.prototype = Parser.prototype;

module.exports = { createToken, Lexer, Parser: CallableParser };
