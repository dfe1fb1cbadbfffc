// Prints a table of an .mdb file as the text that `tolva-data dump` prints, read by an independent reader:
//
//   node dump.js FILE TABLE
import { readFileSync } from "node:fs";
import MDBReader from "mdb-reader";

const escapes = { "\t": "\\t", "\r": "\\r", "\n": "\\n", "\0": "\\0", "\\": "\\\\" };
const escape = (text) => text.replace(/[\t\r\n\0\\]/g, (c) => escapes[c]);

function realText(value) {
    const size = Math.abs(value);
    const text = value === 0 || (size >= 1e-6 && size < 1e15) ? String(value) : value.toExponential();
    return (Object.is(value, -0) ? "-0" : text).replace(/e([+-])(\d)$/, "e$10$2");
}

// The fewest digits that give the same number of single width.
function singleText(value) {
    for (let digits = 1; digits < 9; ++digits) {
        const shorter = Number(value.toPrecision(digits));
        if (Math.fround(shorter) === value) return realText(shorter);
    }
    return realText(Number(value.toPrecision(9)));
}

const fieldText = {
    boolean: (value) => (value ? "1" : "0"),
    float: singleText,
    double: realText,
    datetime: (value) => value.toISOString().replace(/^\+?(.*)T(.{8}).*$/, "$1 $2"),
    currency: (value) => (value.includes(".") ? value.replace(/\.?0+$/, "") : value),
    binary: (value) => "0x" + Buffer.from(value).toString("hex"),
    ole: (value) => "0x" + Buffer.from(value).toString("hex"),
    text: escape,
    memo: escape,
};

const [file, name] = process.argv.slice(2);
const table = new MDBReader(readFileSync(file)).getTable(name);
const columns = table.getColumns();
const lines = [columns.map((column) => escape(column.name)).join("\t")];
for (const row of table.getData()) {
    lines.push(
        columns
            .map(({ name, type }) => (row[name] === null ? "\\N" : (fieldText[type] ?? String)(row[name])))
            .join("\t"),
    );
}
process.stdout.write(lines.join("\n") + "\n");
