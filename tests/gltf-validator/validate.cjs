// usage: node validate.cjs FILE.glb...
// Prints one line for each error and warning: file, severity, code, pointer or offset, message.
// Exit code: 0 no error, 1 at least one error, 2 wrong use or unreadable file, 3 validator not installed.
'use strict';

const fs = require('fs');
const path = require('path');

const SEVERITIES = ['error', 'warning'];
const EXIT = { valid: 0, invalid: 1, misuse: 2, notInstalled: 3 };

function loadValidator() {
    try {
        return require('gltf-validator');
    } catch (error) {
        console.error('gltf-validator is not installed: run scripts/setup');
        process.exit(EXIT.notInstalled);
    }
}

function place(message) {
    return message.pointer !== undefined ? message.pointer || '/' : `byte ${message.offset ?? 0}`;
}

async function messagesOf(validator, file, bytes) {
    const readSibling = async (uri) =>
        new Uint8Array(fs.readFileSync(path.resolve(path.dirname(file), decodeURIComponent(uri))));
    try {
        const report = await validator.validateBytes(bytes, {
            uri: path.basename(file),
            maxIssues: 1000,
            // How a picture is encoded is up to who made it: it stays as it came.
            ignoredIssues: ['IMAGE_FEATURES_UNSUPPORTED'],
            externalResourceFunction: readSibling,
        });
        return report.issues.messages;
    } catch (error) {
        return [{ severity: 0, code: 'UNREADABLE', message: String(error.message ?? error) }];
    }
}

async function main(files) {
    if (files.length === 0) {
        console.error('usage: node validate.cjs FILE.glb...');
        return EXIT.misuse;
    }
    const validator = loadValidator();
    let exitCode = EXIT.valid;
    for (const file of files) {
        const bytes = new Uint8Array(fs.readFileSync(file));
        for (const message of await messagesOf(validator, file, bytes)) {
            if (message.severity >= SEVERITIES.length) {
                continue;
            }
            console.log(`${file}: ${SEVERITIES[message.severity]} ${message.code} at ${place(message)}: ${message.message}`);
            if (message.severity === 0) {
                exitCode = EXIT.invalid;
            }
        }
    }
    return exitCode;
}

main(process.argv.slice(2)).then(
    (exitCode) => (process.exitCode = exitCode),
    (error) => {
        console.error(error.message);
        process.exitCode = EXIT.misuse;
    },
);
