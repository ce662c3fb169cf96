// Validates all glTF files of a folder by the Khronos validator: no error and no warning is allowed.
//
//     node validate.mjs FOLDER

import fs from 'node:fs';
import path from 'node:path';
import validator from 'gltf-validator';

const folder = process.argv[2];
const files = fs.readdirSync(folder).filter((name) => /\.(glb|gltf)$/.test(name)).sort();
let problems = 0;
for (const name of files) {
    const report = await validator.validateBytes(new Uint8Array(fs.readFileSync(path.join(folder, name))), {
        uri: name,
        maxIssues: 0,
        externalResourceFunction: async (uri) =>
            new Uint8Array(fs.readFileSync(path.join(folder, decodeURIComponent(uri)))),
    });
    for (const message of report.issues.messages) {
        const isProblem = message.severity < 2; // an error or a warning
        if (isProblem)
            console.log(`${name}: ${message.code}: ${message.message} ${message.pointer ?? ''}`);
    }
    problems += report.issues.numErrors + report.issues.numWarnings;
}
console.log(`${files.length} files, ${problems} errors and warnings`);
process.exit(problems === 0 && files.length > 0 ? 0 : 1);
