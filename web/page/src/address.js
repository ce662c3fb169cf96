// What the address of the page asks for, behind the "#":
//
//   camera=X,Y,Z,X,Y,Z      where the eye stands, and the place that it looks at
//   background=RRGGBB       one colour behind the model
//   panels=off              the picture alone, such as for a frame in another page

export function askedFor(hash) {
    const values = new URLSearchParams(hash.replace(/^#/, ""));
    const camera = (values.get("camera") ?? "").split(",").filter((part) => part.trim() !== "").map(Number);
    const background = values.get("background") ?? "";
    return {
        camera: camera.length === 6 && camera.every(Number.isFinite) ? camera : null,
        background: /^[0-9a-f]{6}$/i.test(background) ? `#${background}` : null,
        panels: values.get("panels") !== "off",
    };
}

/** The hash with another camera, all else as it was. */
export function withCamera(hash, numbers) {
    const values = new URLSearchParams(hash.replace(/^#/, ""));
    values.set("camera", numbers.map((number) => Number(number.toPrecision(9))).join(","));
    return `#${values.toString().replaceAll("%2C", ",")}`;
}
