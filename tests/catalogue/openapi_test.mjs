// docs/openapi.json is a sound description of an interface, in the eyes of a validator that is not ours.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";

import { Validator } from "@seriousme/openapi-schema-validator";

const description = JSON.parse(readFileSync(join(process.env.VEK_ROOT, "docs/openapi.json"), "utf8"));

test("the description is valid", async () => {
  const { valid, errors } = await new Validator().validate(structuredClone(description));
  assert.ok(valid, JSON.stringify(errors));
});

test("every reference in it leads somewhere, and each operation has arguments and a result", () => {
  const schemas = description.components.schemas;
  const references = [...JSON.stringify(description).matchAll(/"\$ref":"#\/components\/schemas\/([^"]+)"/g)];
  for (const [, name] of references) assert.ok(name in schemas, name);
  const names = Object.keys(schemas.Batch.properties.operations.properties);
  assert.equal(names.length, 81);
  for (const name of names) assert.ok(`${name}.result` in schemas, name);
});
