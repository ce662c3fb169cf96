// The model stands in the page as base64 of gzip, so that the page is one file of plain text.

const pieceLength = 1 << 20; // Of base64: a multiple of four letters.

/** The bytes of the model; its text is taken out of the page. */
export async function embeddedModel() {
    const holder = document.getElementById("model");
    const text = holder.textContent.trim();
    holder.remove();
    let at = 0;
    const packed = new ReadableStream({
        pull(controller) {
            if (at >= text.length)
                return controller.close();
            controller.enqueue(Uint8Array.from(atob(text.slice(at, at + pieceLength)), (letter) => letter.charCodeAt(0)));
            at += pieceLength;
        },
    });
    return new Response(packed.pipeThrough(new DecompressionStream("gzip"))).arrayBuffer();
}
