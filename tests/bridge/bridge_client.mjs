// What the tests of the bridge share: the protocol's own client with the bridge behind it, and a stand-in for the add-in.
import { readFileSync } from 'node:fs';
import http from 'node:http';
import net from 'node:net';
import { Client } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport } from '@modelcontextprotocol/sdk/client/stdio.js';

const root = process.env.VEK_ROOT;

export const catalogue = JSON.parse(readFileSync(`${root}/catalogue/operations.json`, 'utf8'));
export const operations = catalogue.families.flatMap((family) => family.operations);

// A connected client; `t` closes it.
export async function connect(t, address) {
  const transport = new StdioClientTransport({
    command: process.env.VEK_MCP,
    args: address ? ['--address', address] : [],
    stderr: 'ignore',
  });
  const client = new Client({ name: 'tests', version: '1' });
  await client.connect(transport);
  t.after(() => client.close());
  return client;
}

async function listen(t, server) {
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  t.after(() => server.close());
  return `127.0.0.1:${server.address().port}`;
}

// An add-in that answers each batch as `answer` tells: a status and a body, of the operations in the order of the request.
export async function standInAddin(t, answer) {
  const posted = [];
  const server = http.createServer(async (request, response) => {
    let body = '';
    request.setEncoding('utf8');
    for await (const part of request) body += part;
    const batch = Object.entries(JSON.parse(body).operations);
    posted.push(batch);
    const { status = 200, json } = await answer(batch, posted.length);
    const bytes = Buffer.from(JSON.stringify(json));
    response.writeHead(status, { 'Content-Length': bytes.length, Connection: 'close' });
    response.end(bytes);
  });
  // A client that ends its side still wants the answer.
  server.httpAllowHalfOpen = true;
  return { posted, address: await listen(t, server) };
}

// The results with which the add-in answers: what `result` gives for each operation, in the add-in's order.
export function results(batch, result = () => ({})) {
  const entries = batch.map(([name, args]) => [name, { success: true, message: 'Done.', data: null, ...result(name, args) }]);
  return { json: { results: Object.fromEntries(entries.sort(([a], [b]) => (a < b ? -1 : 1))) } };
}

// Something on a port that says these bytes to whoever connects, and hangs up.
export function talker(t, bytes) {
  const server = net.createServer((socket) => {
    socket.on('error', () => {});
    socket.once('data', () => socket.end(bytes));
  });
  return listen(t, server);
}

export const texts = (result) => result.content.filter((part) => part.type === 'text').map((part) => part.text);
