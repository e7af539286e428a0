// A session through the bridge with the add-in on the bench behind it: what an assistant would do to make a part.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { after, before, test } from 'node:test';
import { connect, texts } from './bridge_client.mjs';

const scratch = mkdtempSync(join(tmpdir(), 'bridge-'));
const windowsPath = (name) => `Z:${join(scratch, name).replaceAll('/', '\\')}`;
let bench;

before(async () => {
  bench = spawn(`${process.env.VEK_ROOT}/cmake/start_bench.sh`, { stdio: ['pipe', 'pipe', 'ignore'] });
  for await (const line of createInterface({ input: bench.stdout })) if (line.includes('ready')) return bench.stdout.resume();
  throw new Error('the bench does not start');
}, { timeout: 120_000 });

after(async () => {
  const ended = new Promise((resolve) => bench.once('exit', resolve));
  bench.stdin.end('quit\n');
  await ended;
  rmSync(scratch, { recursive: true });
});

async function succeed(client, name, args = {}) {
  const answer = await client.callTool({ name, arguments: args });
  assert.ok(!answer.isError, texts(answer)[0]);
  return answer;
}

test('a block with a hole is made, measured, seen and written', { timeout: 120_000 }, async (t) => {
  const client = await connect(t);
  // From here on the library holds each result against its tool's output schema.
  await client.listTools();

  const steps = [
    ['api_document_new_part', {}],
    ['api_sketch_create', { name: 'BLOCK', plane: 'XY' }],
    ['api_sketch_rectangle_two_points', { sketch_name: 'BLOCK', x1: 0, y1: 0, x2: 40, y2: 20 }],
    ['api_feature_extrude', { sketch_name: 'BLOCK', distance_mm: 10 }],
    ['api_sketch_create', { name: 'CENTRE', plane: 'XY' }],
    ['api_sketch_point', { sketch_name: 'CENTRE', x: 20, y: 10 }],
    ['api_feature_hole', { sketch_name: 'CENTRE', diameter_mm: 8, depth_mm: 6 }],
  ].map(([operation, args]) => ({ operation, arguments: args }));
  const made = await succeed(client, 'batch', { steps });
  assert.deepEqual(made.structuredContent.results.map(({ operation }) => operation), steps.map(({ operation }) => operation));
  assert.equal(made.structuredContent.done, 7);

  // 40 x 20 x 10 without a cylinder of radius 4 and height 6, in cubic centimetres.
  const volume = 8 - (Math.PI * 16 * 6) / 1000;
  const measured = await succeed(client, 'api_analysis_mass_properties');
  const given = measured.structuredContent.volume_cm3;
  assert.ok(Math.abs(given - volume) < volume * 1e-5, `the volume is ${given}`);

  const box = await succeed(client, 'api_analysis_bounding_box');
  assert.deepEqual(box.structuredContent.size, { x_mm: 40, y_mm: 20, z_mm: 10 });

  const shot = await succeed(client, 'api_export_screenshot', { output_path: windowsPath('block.png'), width_px: 320, height_px: 240 });
  const image = shot.content.find(({ type }) => type === 'image');
  assert.equal(image.mimeType, 'image/png');
  // Behind the signature and the head of a PNG's first block stand width and height.
  const picture = Buffer.from(image.data, 'base64');
  assert.deepEqual([picture.readUInt32BE(16), picture.readUInt32BE(20)], [320, 240]);
  assert.deepEqual(readFileSync(join(scratch, 'block.png')).readUInt32BE(16), 320);

  const sketches = await succeed(client, 'api_sketch_list');
  assert.deepEqual(sketches.structuredContent.items.map(({ name }) => name), ['BLOCK', 'CENTRE']);
  const features = await succeed(client, 'api_feature_list');
  assert.ok(texts(features)[1].includes('Hole 1'));
});

test('what fails says why, and a name with letters of its own comes through at once', { timeout: 60_000 }, async (t) => {
  const client = await connect(t);
  const refused = await client.callTool({ name: 'api_sketch_create', arguments: { plane: 'NÖRDLICH ⌀' } });
  assert.deepEqual([refused.isError, texts(refused)], [true, ["Datum plane 'NÖRDLICH ⌀' not found in the active part."]]);

  // The server waits two seconds for the rest of a request whose length it misjudges, unless it is told that there is none.
  const begun = performance.now();
  for (let i = 0; i < 4; ++i) await client.callTool({ name: 'api_sketch_create', arguments: { plane: 'NÖRDLICH' } });
  assert.ok(performance.now() - begun < 7000, 'requests with such letters wait');
});
