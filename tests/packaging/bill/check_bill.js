// check_bill.js FOLDER PROGRAM=LIBRARY,… …: the bill of materials of the package FOLDER has the form that CycloneDX
// publishes, lists each packed and published file with its hash and no others, and has these libraries in these
// programs.
const assert = require('assert');
const crypto = require('crypto');
const fs = require('fs');
const path = require('path');
const { Spec, Validation } = require('@cyclonedx/cyclonedx-library');

const [folder, ...programs] = process.argv.slice(2);

function filesBelow(place, prefix = '') {
  return fs.readdirSync(place, { withFileTypes: true }).flatMap(entry =>
    entry.isDirectory() ? filesBelow(path.join(place, entry.name), `${prefix}${entry.name}/`) : [prefix + entry.name]);
}

function expectedHashes() {
  const published = ['.zip', '-setup.exe', '-symbols.zip'].map(end => folder + end).filter(fs.existsSync);
  const files = filesBelow(folder).map(name => [name, path.join(folder, name)])
    .concat(published.map(file => [path.basename(file), file]));
  return Object.fromEntries(files.map(([name, file]) =>
    [name, crypto.createHash('sha256').update(fs.readFileSync(file)).digest('hex')]));
}

async function main() {
  const text = fs.readFileSync(`${folder}.cdx.json`, 'utf8');
  const validator = new Validation.JsonStrictValidator(Spec.Version.v1dot5);
  assert.strictEqual(await validator.validate(text), null);
  assert.notStrictEqual(await validator.validate(text.replace('"name"', '"nome"')), null);

  const bill = JSON.parse(text);
  const files = bill.components.filter(component => component.type === 'file');
  assert.deepStrictEqual(
    Object.fromEntries(files.map(file => [file.name, file.hashes[0].content])), expectedHashes());
  for (const program of programs) {
    const [name, libraries] = program.split('=');
    const found = bill.dependencies.find(dependency => dependency.ref === `file:${name}`).dependsOn;
    assert.deepStrictEqual(found, libraries.split(',').map(library => `library:${library}`), name);
  }
  for (const ref of new Set(bill.dependencies.flatMap(dependency => dependency.dependsOn)))
    assert(bill.components.some(component => component['bom-ref'] === ref && (component.hashes || component.version)), ref);
}

main().catch(error => {
  console.error(error);
  process.exit(1);
});
