// check_notation FORMATS SAMPLES LIST DECODED: compiles the notation of every format, reads the sample files with
// it, and compares what it reads with what zemlink decodes. Prints what differs.
'use strict';
const fs = require('fs');
const path = require('path');
const vm = require('vm');
const compiler = require('kaitai-struct-compiler');
const KaitaiStream = require('kaitai-struct/KaitaiStream');
const yaml = require('yaml');

const [formats, samples, list, decoded] = process.argv.slice(2);

// From what the notation reads to what zemlink decodes, for each notation. A text is a decimal number there where
// the format has decimal digits.
const asDecoded = {
    command_file: ({ request }) => request.word !== undefined
        ? { request: 'check-in', name: request.comment.trim() }
        : request.path === '' ? { request: 'new file', id: Number(request.id) }
            : { request: 'open', id: Number(request.id), path: request.path },
    machine_settings: (all) => ({
        id: all.id, ncPath: Number(all.ncPath), secondNumber: Number(all.secondNumber), machine: all.machine.trimEnd(),
    }),
    checkout_answer: ({ word, path }) => answerOf(String.fromCharCode(...word).trim(), path),
    settings: ({ lines }) => ({ lines: lines.map(({ key, value }) => `${key}=${value.trimEnd()}`) }),
    notices: ({ notices }) => ({ notices: notices.map(({ content }) => noticeOf(content)) }),
    registry_value: ({ folder }) => ({ folder }),
    commit_records: ({ records }) => ({
        records: records.map(({ id, file }) => ({ id: id === 0xffffffff ? null : id, file })),
    }),
    nc_queue: ({ programs }) => ({
        programs: programs.map(({ ncPath, program, group }) => ({ ncPath: Number(ncPath), program, group })),
    }),
    tool_data: ({ tools }) => ({ tools: tools.map(toolOf) }),
    load_log: ({ lines }) => ({
        loads: [{ file: lines[0].file, lastStep: Number(lines[lines.length - 1].step) }],
    }),
    picture: ({ width, height, bitsPerPixel }) => ({ width, height, bitsPerPixel, firstRow: 'bottom' }),
};

function answerOf(word, path) {
    return word === 'CHECKIN' ? { answer: 'check-in' }
        : { answer: 'file', fileType: word.slice(0, 3), id: Number(word.slice(3)), path };
}

function noticeOf({ word, id, file }) {
    const kinds = {
        'ZEMID=': 'commit', 'MCAMXMLIMPORTDATAID=': 'setup sheet', 'IMPORTNCQUEUE|': 'NC queue', 'TOOL-': 'tool data',
    };
    const notice = { notice: kinds[Buffer.from(word).toString('latin1')] };
    if (id !== undefined)
        notice.id = Number(id);
    if (file !== undefined)
        notice.file = file;
    return notice;
}

function toolOf(tool) {
    const number = (name) => Number(tool[name].value);
    const rest = tool.commentRest.slice(0, -1);
    const workOffset = tool.commentRest[rest.length].text.replace('PLANEWOFF=', '');
    const plane = (name) => ({
        plane: number(name), x: number(`${name}X`), y: number(`${name}Y`), z: number(`${name}Z`),
    });
    const numbers = (names) => Object.fromEntries(Object.entries(names).map(([ours, name]) => [ours, number(name)]));
    return {
        ...numbers({
            requestId: 'dataId', number: 'number', type: 'type', lengthOffset: 'lengthOffset',
            diameterOffset: 'diameterOffset',
        }),
        comment: tool.comment.value + rest.map(({ text }) => `|${text}`).join(''),
        shape: numbers({
            diameter: 'diameter', additionalDiameter: 'additionalDiameter', cornerRadius: 'cornerRadius',
            cornerRadiusType: 'cornerRadiusType', tipAngle: 'tipAngle', pilotDiameter: 'pilotDiameter',
            flutes: 'flutes', fluteLength: 'fluteLength', shoulderLength: 'shoulderLength',
            shoulderDiameter: 'shoulderDiameter', shoulderAngle: 'shoulderAngle', overallLength: 'overallLength',
            arborDiameter: 'arborDiameter', holderDiameter: 'holderDiameter', holderLength: 'holderLength',
            material: 'material',
        }),
        table: numbers({
            station: 'station', slot: 'slot', lengthOffset: 'tableLengthOffset', spindleSpeed: 'spindleSpeed',
            spindleDirection: 'spindleDirection', feed: 'feed', plungeRate: 'plungeRate', retractRate: 'retractRate',
        }),
        operation: {
            ...numbers({
                id: 'operationId', place: 'operationPlace', type: 'operationType', group: 'group',
                machineGroup: 'machineGroup', level: 'level', feed: 'operationFeed', depth: 'depth',
                holder: 'holder', compensation: 'compensation',
            }),
            workOffset: Number(workOffset),
            toolPlane: plane('toolPlane'),
            constructionPlane: plane('constructionPlane'),
            seconds: Number(tool.seconds),
        },
    };
}

// Where `expected` has other values than `actual`, or `actual` has keys that `expected` lacks.
function differences(actual, expected, place) {
    if (typeof actual !== 'object' || actual === null)
        return Object.is(actual, expected) ? [] : [`${place}: ${actual} instead of ${expected}`];
    if (typeof expected !== 'object' || expected === null)
        return [`${place} is not decoded`];
    const lengths = Array.isArray(actual) && actual.length !== expected.length
        ? [`${place}: ${actual.length} entries instead of ${expected.length}`] : [];
    return lengths.concat(...Object.keys(actual).map(
        (key) => differences(actual[key], expected[key], `${place}.${key}`)));
}

// The compiled reader of a notation.
async function readerOf(notation) {
    const source = yaml.parse(fs.readFileSync(path.join(formats, `${notation}.ksy`), 'utf8'));
    const compiled = await compiler.compile('javascript', source, null, false);
    const context = vm.createContext({ require, module: {}, exports: {}, Uint8Array, define: undefined });
    const file = Object.keys(compiled)[0];
    const name = file.replace(/\.js$/, '');
    vm.runInContext(compiled[file], context);
    return context.exports[name] ?? context[name];
}

function streamOf(bytes) {
    return new KaitaiStream(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length));
}

async function check(sample, notation) {
    const Reader = await readerOf(notation);
    const stream = streamOf(fs.readFileSync(path.join(samples, sample)));
    const read = asDecoded[notation](new Reader(stream));
    const expected = JSON.parse(fs.readFileSync(path.join(decoded, `${path.parse(sample).name}.json`), 'utf8'));
    const rest = stream.isEof() ? [] : [`${stream.size - stream.pos} bytes are left`];
    return rest.concat(differences(read, expected, '')).map((text) => `${sample}: ${text}`);
}

// What is no notice ends its reader, which reads until the end of the stream.
async function refusesOtherNotices() {
    const Reader = await readerOf('notices');
    try {
        new Reader(streamOf(Buffer.from('HELLO\n')));
    } catch {
        return [];
    }
    return ['notices.ksy reads what is no notice'];
}

async function main() {
    const rows = fs.readFileSync(list, 'utf8').split('\n').filter((line) => line && !line.startsWith('#'))
        .map((line) => line.split(/\s+/));
    const faults = await refusesOtherNotices();
    for (const [sample, , notation] of rows)
        faults.push(...await check(sample, notation));
    const used = new Set(rows.map(([, , notation]) => `${notation}.ksy`));
    for (const file of fs.readdirSync(formats))
        if (!used.has(file))
            faults.push(`${file} reads no sample`);
    for (const fault of faults)
        console.error(fault);
    process.exitCode = faults.length ? 1 : 0;
}

main();
