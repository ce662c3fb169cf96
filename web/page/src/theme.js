// Light or dark: as the system has it, until somebody chooses.

export function isDark() {
    const chosen = document.documentElement.dataset.theme;
    return chosen === undefined ? matchMedia("(prefers-color-scheme: dark)").matches : chosen === "dark";
}

export function switchTheme() {
    document.documentElement.dataset.theme = isDark() ? "light" : "dark";
}
