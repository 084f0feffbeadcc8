// Prints a table as the package mdb-reader reads it:
//
//     node mdb_reader_rows.mjs FOLDER FILE TABLE
//
// FOLDER is where the package was installed (its node_modules lies there). The first line has the names of
// the columns, each further one a row: a tab between values, \N for NULL, and \t, \n, \r and \\ for the
// characters that would otherwise be taken for separators. Dates are "2003-05-12 10:30:00", bytes hexadecimal
// digits, truth is 0 or 1.

import { readFileSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const [folder, file, table] = process.argv.slice(2);
const entry = join(folder, "node_modules", "mdb-reader", "lib", "node", "index.js");
const { default: MDBReader } = await import(pathToFileURL(entry).href);

const escapes = { "\t": "\\t", "\n": "\\n", "\r": "\\r", "\\": "\\\\" };

function escaped(text) {
    return text.replace(/[\t\n\r\\]/g, (character) => escapes[character]);
}

// The package takes the times in the file for UTC.
function dateText(date) {
    const seconds = Math.round(date.getTime() / 1000);
    return new Date(seconds * 1000).toISOString().slice(0, 19).replace("T", " ");
}

function valueText(value) {
    if (value === null || value === undefined) {
        return "\\N";
    }
    if (value instanceof Date) {
        return dateText(value);
    }
    if (value instanceof Uint8Array) {
        return Buffer.from(value).toString("hex");
    }
    if (typeof value === "boolean") {
        return value ? "1" : "0";
    }
    return escaped(String(value));
}

const opened = new MDBReader(readFileSync(file)).getTable(table);
const names = opened.getColumns().map((column) => column.name);
const lines = [names.map(escaped).join("\t")];
for (const row of opened.getData()) {
    lines.push(names.map((name) => valueText(row[name])).join("\t"));
}
process.stdout.write(lines.join("\n") + "\n");
