// The bridge as the protocol's own client library sees it, with a stand-in for the add-in behind it.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import Ajv from 'ajv';
import { catalogue, connect, operations, results, standInAddin, talker, texts } from './bridge_client.mjs';

const point = { sketch_name: 'S', x: 1, y: 2 };

test('every operation is a tool whose schemas are sound and take its example', async (t) => {
  const client = await connect(t, '127.0.0.1:1');
  const { tools } = await client.listTools();
  assert.equal(tools.length, 82);
  assert.deepEqual(tools.map((tool) => tool.name).sort(), ['batch', ...operations.map(({ name }) => name)].sort());

  const ajv = new Ajv({ strict: true, strictTypes: false, allErrors: true });
  const at = (data, path) => path.split('/').slice(1).reduce((value, key) => value[key], data);
  const varies = (value) => /^<.*>$/.test(value);
  const schemas = new Map(tools.map(({ name, inputSchema, outputSchema }) => [
    name, { takes: ajv.compile(inputSchema), gives: outputSchema && ajv.compile(outputSchema) }]));
  for (const { name, example, ...operation } of operations) {
    const { takes, gives } = schemas.get(name);
    assert.ok(takes(example.arguments), `${name}: ${ajv.errorsText(takes.errors)}`);
    assert.ok(!takes({ ...example.arguments, surplus: 1 }), `${name} takes anything`);
    if (gives && example.data && !varies(example.data)) {
      const data = Array.isArray(example.data) ? { items: example.data } : example.data;
      const wrong = gives(data) ? [] : gives.errors.filter(({ instancePath }) => !varies(at(data, instancePath)));
      assert.deepEqual(wrong, [], name);
    }
    const { annotations, description } = tools.find((tool) => tool.name === name);
    assert.equal(annotations.readOnlyHint, operation.read_only, name);
    assert.equal(annotations.destructiveHint, operation.destructive, name);
    assert.ok(description.startsWith(operation.purpose), name);
  }
  const step = ([operation, args]) => ({ operation, arguments: args });
  const steps = operations.flatMap(({ example }) => example.given.map(step));
  const { takes } = schemas.get('batch');
  assert.ok(takes({ steps }), ajv.errorsText(takes.errors));
});

test('a batch goes out in as few requests as its names allow, and comes back in the order of its steps', async (t) => {
  const { posted, address } = await standInAddin(t, (batch, nth) => results(batch, (name) => ({ message: `${name} ${nth}` })));
  const client = await connect(t, address);
  await client.listTools();
  const names = ['api_sketch_point', 'api_document_info', 'api_sketch_point', 'api_document_close', 'api_document_list_open',
    'api_sketch_point'];
  const steps = names.map((operation) => ({ operation, arguments: operation === 'api_sketch_point' ? point : {} }));
  const heard = [];
  const onprogress = ({ progress, total }) => heard.push([progress, total]);
  const answer = await client.callTool({ name: 'batch', arguments: { steps } }, undefined, { onprogress });

  assert.deepEqual(posted.map((batch) => batch.map(([name]) => name)),
    [names.slice(0, 2), names.slice(2, 4), names.slice(4)]);
  const nth = [1, 1, 2, 2, 3, 3];
  assert.deepEqual(answer.structuredContent, {
    results: names.map((operation, i) => ({ operation, outcome: 'done', message: `${operation} ${nth[i]}` })),
    done: 6, failed: 0, not_run: 0,
  });
  assert.deepEqual(JSON.parse(texts(answer)[1]), answer.structuredContent);
  assert.deepEqual(heard, [[2, 6], [4, 6]]);
});

test('a batch that stops on failure leaves out what comes behind', async (t) => {
  const { posted, address } = await standInAddin(t, (batch) =>
    results(batch, (name) => ({ success: name !== 'api_document_close' })));
  const client = await connect(t, address);
  const names = ['api_document_info', 'api_document_close', 'api_feature_list', 'api_document_info'];
  const steps = names.map((operation) => ({ operation }));
  for (const [stop_on_failure, outcomes, requests] of [
    [true, ['done', 'failed', 'not run', 'not run'], 2],
    [false, ['done', 'failed', 'done', 'done'], 2],
  ]) {
    posted.length = 0;
    const answer = await client.callTool({ name: 'batch', arguments: { steps, stop_on_failure } });
    assert.ok(answer.isError);
    assert.deepEqual(answer.structuredContent.results.map(({ outcome }) => outcome), outcomes);
    assert.equal(posted.length, requests);
  }
});

test('mistakes in arguments are told before anything is posted', async (t) => {
  const { posted, address } = await standInAddin(t, (batch) => results(batch));
  const client = await connect(t, address);
  const table = [
    [{ ...point, z: 3 }, "Unknown argument 'z': api_sketch_point takes sketch_name, x, y."],
    [{ ...point, x: '1' }, "Argument 'x' must be a number."],
    [{ ...point, x: null }, "Argument 'x' must be a number."],
    [{ ...point, sketch_name: 7 }, "Argument 'sketch_name' must be a text."],
  ];
  for (const [args, mistake] of table) {
    const alone = await client.callTool({ name: 'api_sketch_point', arguments: args });
    assert.deepEqual([alone.isError, texts(alone)], [true, [`Nothing was run.\n${mistake}`]]);
    const steps = [{ operation: 'api_document_info' }, { operation: 'api_sketch_point', arguments: args }];
    const batch = await client.callTool({ name: 'batch', arguments: { steps } });
    assert.deepEqual([batch.isError, texts(batch)], [true, [`Nothing was run.\nStep 2: ${mistake}`]]);
  }
  assert.equal(posted.length, 0);
  await assert.rejects(client.callTool({ name: 'api_nothing' }), { code: -32602 });
  // What is missing is for the add-in to say.
  await client.callTool({ name: 'api_sketch_point', arguments: {} });
  assert.equal(posted.length, 1);
});

test('texts, numbers and a picture come and go as they are', async (t) => {
  const png = Buffer.from('not quite a picture').toString('base64');
  const { posted, address } = await standInAddin(t, (batch) => results(batch, (name) => ({
    message: 'Größe ⌀ 5 "quoted"',
    data: name === 'api_export_screenshot'
      ? { output_path: 'O:\\ä.png', view: 'iso', screenshot_base64: png, screenshot_media_type: 'image/png' }
      : { sketch_name: 'Ω', entity: 'P:2' },
  })));
  const client = await connect(t, address);
  await client.listTools();
  const args = { sketch_name: 'Ω 𝄞 \\ " \n', x: 0.1, y: -1e-7 };
  const drawn = await client.callTool({ name: 'api_sketch_point', arguments: args });
  assert.deepEqual(posted, [[['api_sketch_point', args]]]);
  assert.deepEqual(drawn.structuredContent, { sketch_name: 'Ω', entity: 'P:2' });
  assert.deepEqual(texts(drawn), ['Größe ⌀ 5 "quoted"', '{"sketch_name":"Ω","entity":"P:2"}']);

  const shot = await client.callTool({ name: 'api_export_screenshot', arguments: { output_path: 'ä.png' } });
  assert.deepEqual(shot.structuredContent, { output_path: 'O:\\ä.png', view: 'iso' });
  assert.deepEqual(shot.content.at(-1), { type: 'image', data: png, mimeType: 'image/png' });
  assert.ok(!texts(shot).join().includes(png));
});

test('a failure that tells data tells it here, too', async (t) => {
  const data = { occurrence_name: 'A', from_mm: [0, 0, 0], to_mm: [1, 0, 0], delta_mm: [1, 0, 0] };
  const { address } = await standInAddin(t, (batch) => results(batch, () => ({ success: false, message: 'Short.', data })));
  const client = await connect(t, address);
  await client.listTools();
  const moved = await client.callTool({ name: 'api_assembly_move_component', arguments: { occurrence_name: 'A', dx_mm: 5 } });
  assert.ok(moved.isError);
  assert.deepEqual(moved.structuredContent, data);
  assert.deepEqual(texts(moved), ['Short.', JSON.stringify(data)]);
});

test('while Creo works the bridge answers, and a cancelled batch posts nothing more', async (t) => {
  const { posted, address } = await standInAddin(t, async (batch) => {
    await release;
    return results(batch);
  });
  let letGo;
  const release = new Promise((resolve) => { letGo = resolve; });
  const client = await connect(t, address);
  const cancel = new AbortController();
  const steps = [{ operation: 'api_document_rebuild' }, { operation: 'api_document_rebuild' }];
  const call = client.callTool({ name: 'batch', arguments: { steps } }, undefined, { signal: cancel.signal });
  while (posted.length === 0) await client.ping();
  cancel.abort('changed my mind');
  await assert.rejects(call);
  // Once this is answered the cancellation has been read, too.
  await client.ping();
  letGo();
  // The worker is free again, and what it does next is the next request.
  const next = await client.callTool({ name: 'api_document_new_part' });
  assert.equal(next.content[0].text, 'Done.');
  assert.deepEqual(posted.map(([[name]]) => name), ['api_document_rebuild', 'api_document_new_part']);
});

test('each way in which the add-in can fail is told in plain words', async (t) => {
  const unknown = "Operation 'api_document_rebuild' is not implemented by this provider.";
  const error = (status, text) => standInAddin(t, () => ({ status, json: { error: text } })).then(({ address }) => address);
  const addin = (json) => standInAddin(t, () => ({ json })).then(({ address }) => address);
  const unsure = /may have run/;
  const table = [
    ['127.0.0.1:1', /^Creo isn't running or the add-in isn't loaded: nothing answers on 127\.0\.0\.1:1\.$/],
    [await error(503, 'MCP provider not initialised.'), /starting or stopping: MCP provider not initialised\.$/],
    [await error(504, 'Timed out waiting.'), /^Creo is busy, or a dialog stands open in it: Timed out waiting\./, unsure],
    [await error(404, 'Endpoint not found'), /did not take the batch \(status 404\): Endpoint not found$/],
    [await addin({ results: {} }), /^The add-in gave no result for api_document_rebuild\.$/],
    [await addin({ ok: true }), /is not what the add-in answers: \{"ok":true\}/, unsure],
    [await addin({ results: { api_document_rebuild: { success: false, message: unknown, data: null } } }),
      /not implemented by this provider\. The add-in in Creo is older than vek-mcp \d+\.\d+\.\d+\.$/],
    [await talker(t, ''), /closed without an answer/, unsure],
    [await talker(t, 'SSH-2.0-x\r\n'), /is another program than the add-in/],
    [await talker(t, 'HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n{"results":'), /was cut off\./, unsure],
    [await talker(t, 'HTTP/1.1 200 OK\r\nContent-Length: 11\r\n\r\n{"results":'), /is not what the add-in answers/, unsure],
  ];
  for (const [address, ...patterns] of table) {
    const client = await connect(t, address);
    const answer = await client.callTool({ name: 'api_document_rebuild' });
    assert.ok(answer.isError, address);
    for (const pattern of patterns) assert.match(answer.content[0].text, pattern);
  }
});
