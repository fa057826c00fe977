// What the schema of presets says is what the program says: `datahelpers check` is asked of each preset that the schema
// accepts or refuses. DATAHELPERS names the program.
import assert from 'node:assert/strict';
import { execFile, spawnSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { availableParallelism, tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, test } from 'node:test';

import Ajv2020 from 'ajv/dist/2020.js';

const program = process.env.DATAHELPERS ?? 'datahelpers';
const presets = new URL('../../presets/', import.meta.url).pathname;
const folder = mkdtempSync(join(tmpdir(), 'datahelpers-schema-'));
after(() => rmSync(folder, { recursive: true }));

function report(...words) {
  const { stdout } = spawnSync(program, [...words, '--json'], { maxBuffer: 1 << 26 });
  return JSON.parse(stdout);
}

// Strict: an unknown keyword, a bound without a type and the like are errors; so is what it would warn of.
const warn = (...words) => { throw new Error(words.join(' ')); };
const ajv = () => new Ajv2020({ strict: true, allErrors: true, logger: { log() {}, warn, error: warn } });
const validators = new Map();
function validator(container = '') {
  if (!validators.has(container)) {
    const { stdout } = spawnSync(program, ['schema', ...(container ? [container] : [])], { maxBuffer: 1 << 26 });
    validators.set(container, ajv().compile(JSON.parse(stdout)));
  }
  return validators.get(container);
}

// Whether the schema of any preset accepts it; that of its container must say the same.
function schemaAccepts(preset) {
  const any = validator()(preset);
  const container = preset?.Format?.Container;
  if (containers.has(container)) assert.equal(validator(container)(preset), any, JSON.stringify(preset));
  return any;
}

let written = 0;
// The problems that `check` tells of the preset.
function problems(preset) {
  const file = join(folder, `${written++}.json`);
  writeFileSync(file, typeof preset === 'string' ? preset : JSON.stringify(preset));
  return new Promise((resolve) => {
    execFile(program, ['check', file, '--json'], { maxBuffer: 1 << 26 }, (_, out) => {
      rmSync(file);
      resolve(JSON.parse(out).problems);
    });
  });
}

async function inParallel(items, work) {
  const left = items.entries();
  const worker = async () => { for (const [, item] of left) await work(item); };
  await Promise.all(Array.from({ length: availableParallelism() }, worker));
}

const containers = new Map(report('list', 'formats').formats.map(({ name }) => [name, report('show', 'format', name)]));
const streamOf = (preset, type) => preset.Streams.find((stream) => stream.TypeId === type);

function set(tree, path, value) {
  const names = path.split('/');
  const last = names.pop();
  let node = tree;
  for (const name of names) node = node[name] ??= {};
  node[last] = value;
}

test('the presets that come with the program are valid', () => {
  for (const name of readdirSync(presets)) {
    const preset = JSON.parse(readFileSync(join(presets, name)));
    assert.ok(schemaAccepts(preset), `${name}: ${JSON.stringify(validator().errors)}`);
  }
});

test('the default settings of every container are a valid preset', () => {
  for (const [name, { defaults }] of containers) {
    const { Streams, ...Format } = defaults.Format;
    assert.ok(schemaAccepts({ Format, Streams }), `${name}: ${JSON.stringify(validator().errors)}`);
  }
});


// Whole presets, and what they are refused for; a note instead of a word where they are accepted.
const audio = (codec, rest) => ({ TypeId: 'audio', AudioCodec: codec, ...rest });
const video = (codec, rest) => ({ TypeId: 'video', VideoCodec: codec, ...rest });
const mp4 = (...Streams) => ({ Format: { Container: 'mp4' }, Streams });
const resampler = (Resampler) => ({ AudioResample: { Resampler } });
const resizer = (Resizer) => ({ VideoResize: { Resizer } });
const table = [
  [true, { Format: { Container: 'mp4' } }],
  [true, { Format: { Container: 'mp4' }, Size: 900_000_000 }],
  [true, { Format: { Container: 'mp4' }, Size: '0.9G' }],
  [true, mp4({ TypeId: 'video' }, { TypeId: 'audio' }, { TypeId: 'subtitle', SubtitleCodec: { CodecId: 'mov_text' } })],
  [true, mp4(video({ CodecId: 'auto', BitRate: 3_000_000 }, { KeepFields: true, Tracks: 'all' }))],
  [true, mp4(video({ EncodeOptions: { Preset: 'slow' } }))],
  [true, mp4(audio({ RateControl: 'auto' }, resampler({ SampleRate: 'auto', Layout: 'auto' })))],
  [true, mp4(audio({ CodecId: 'aac' }, resampler({ SampleRate: -1, Layout: 'unknown', SampleFmt: 'none' })))],
  ...['25/1', '30000/1001', 25, '25', 'auto', '0/1'].map((Fps) => [true, mp4(video({}, { VideoFrameRate: { Fps } }))]),
  [true, mp4(video({ CodecId: 'h264', Fps: '25.5' }))],
  [true, mp4(video({}, resizer({ Width: 640 })))],
  [true, mp4(video({}, resizer({ FrameSizeMode: 'custom_scale', Width: 33, Height: 33 })))],
  [true, mp4(video({ CodecId: 'h264', RateControl: 'vbr', Quality: 100 }))],
  [true, { Format: { Container: 'matroska' }, Streams: [video({ CodecId: 'copy' })] }],
  [false, []],
  [false, {}],
  [false, { Format: {} }],
  [false, { Format: 'mp4' }],
  [false, { Format: { Container: 'mp5' } }],
  [false, { Format: { Container: ['mp4'] } }],
  [false, { Format: { Container: 'mp4' }, Stream: [] }],
  [false, { Format: { Container: 'mp4', Progressiv: true } }],
  [false, { Format: { Container: 'mp4', Progressive: 1 } }],
  [false, { Format: { Container: 'mp4', DvdStandard: 'pal' } }],
  [false, { Format: { Container: 'mp4', Limits: { MaxAudio: '1' } } }],
  [false, { Format: { Container: 'dvd', DiskSize: 1 } }],
  ...[0, -5, '', '0k', '25 M', '25T', true].map((Size) => [false, { Format: { Container: 'mp4' }, Size }]),
  [false, mp4()],
  [false, mp4(1)],
  [false, mp4({})],
  [false, mp4({ TypeId: 'vidio' })],
  [false, mp4({ TypeId: 'audio', KeepFields: true })],
  [false, mp4({ TypeId: 'audio', VideoCodec: {} })],
  [false, mp4({ TypeId: 'audio', Tracks: 1 })],
  [false, mp4(audio(null))],
  [false, mp4(audio({ CodecId: 'vorbis' }))],
  [false, mp4(audio({ CodecId: 'h264' }))],
  [false, mp4(audio({ CodecId: 'copy', BitRate: 128000 }))],
  [false, mp4(video({ CodecId: 'copy' }, resizer({ Width: 640 })))],
  [false, mp4(video({ Preset: 'slow' }))],
  [false, mp4(video({ CodecId: 'auto', EncodeOptions: { Preset: 'slowest' } }))],
  [false, mp4(video({ CodecId: 'h264', RateControl: 'vbr' }))],
  [false, mp4(video({ CodecId: 'mpeg4', EncodeOptions: { Preset: 'slow' } }))],
  [false, mp4(audio({ CodecId: 'aac', BitRate: 320_000 }, resampler({ Layout: 'mono' })))],
  [false, mp4(audio({ CodecId: 'mp3' }, resampler({ SampleRate: 8000 })))],
  [false, mp4(video({}, resizer({ Width: 641 })))],
  [false, mp4(video({}, { VideoFrameRate: { Fps: 26 } }))],
  [false, mp4(video({}, { VideoFrameRate: { Fps: 29.97 } }))],
  [false, { Format: { Container: 'wav' }, Streams: [video({ CodecId: 'auto' })] }],
];
for (const [file, wrong] of [['dvd-pal', '30000/1001'], ['dvd-ntsc', '25/1'], ['vcd-pal', 24]]) {
  const disc = JSON.parse(readFileSync(join(presets, `${file}.json`)));
  const change = (type, path, value) => {
    const preset = structuredClone(disc);
    set(streamOf(preset, type), path, value);
    table.push([false, preset]);
  };
  change('video', 'VideoFrameRate/Fps', wrong);
  change('video', 'VideoResize/Resizer/Height', 482);
  change('video', 'VideoCodec/BitRate', 20_000_000);
  change('video', 'VideoCodec/RateControl', 'vbr');
  change('audio', 'AudioCodec/BitRate', 128_000);
  change('audio', 'AudioResample/Resampler/SampleRate', 44_100);
}

test('presets right and wrong are told alike by the schema and by the program', async () => {
  await inParallel(table, async ([isRight, preset]) => {
    const text = JSON.stringify(preset);
    assert.equal(schemaAccepts(preset), isRight, `${text}: ${JSON.stringify(validator().errors)}`);
    const wrong = await problems(preset);
    assert.equal(wrong.length === 0, isRight, `${text}: ${JSON.stringify(wrong)}`);
  });
});

// Values on and off a constraint, as `show` tells it.
function candidates(domain) {
  const values = [];
  if (domain.values) {
    const all = domain.values.map(({ value }) => value).filter((value) => typeof value !== 'object');
    values.push(all.at(0), all.at(-1), typeof all[0] === 'number' ? all[0] + 1 : 'no-such-value');
  }
  if (domain.min !== undefined) values.push(domain.min, domain.min - 1);
  if (domain.max !== undefined) values.push(domain.max, domain.max + 1);
  return values.filter((value) => value !== undefined);
}
const otherTypes = ['auto', '25/1', 2.5, true, {}];

const nodes = { video: 'VideoCodec', audio: 'AudioCodec' };
const filters = report('list', 'filters').filters.map(({ name, type }) => ({ name, type, sheet: report('show', 'filter', name) }));

// [path, values to try] of the settings of a stream that the codec and its container restrict, or of all.
function settingsOf(type, sheet, container, all) {
  const found = [];
  const addTree = (path, tree) => {
    for (const [name, value] of Object.entries(tree)) {
      if (typeof value === 'object') addTree(`${path}/${name}`, value);
      else if (name !== 'CodecId') found.push([`${path}/${name}`, [value, ...otherTypes]]);
    }
  };
  const addSheet = (node, { defaults, constraints }) => {
    if (all) addTree(node, defaults[node]);
    for (const { path, ...domain } of constraints) {
      const isOfFilter = filters.some(({ name }) => path.startsWith(`${name}/`));
      if (!path.startsWith('Streams/')) found.push([isOfFilter ? path : `${node}/${path}`, candidates(domain)]);
    }
  };
  addSheet(nodes[type], sheet);
  for (const { name, type: of, sheet: filter } of filters) if (all && of === type) addSheet(name, filter);
  const isOfStream = (path) => [nodes[type], ...filters.filter((one) => one.type === type).map(({ name }) => name)].includes(path.split('/')[0]);
  for (const { then: { path, ...domain } } of [...sheet.rules, ...container.rules]) {
    if (isOfStream(path)) found.push([path, candidates(domain)]);
  }
  return found;
}

// A stream of the codec in the container for which `check` finds nothing wrong, or null.
async function fine(container, type, codec) {
  const preset = { Format: { Container: container }, Streams: [{ TypeId: type, [nodes[type]]: { CodecId: codec } }] };
  for (let i = 0; i < 4; ++i) {
    const wrong = await problems(preset);
    if (wrong.length === 0) return preset;
    for (const { path, wayOut } of wrong) {
      const value = wayOut?.match(/=([^=]*)$/)?.[1];
      if (value === undefined || !path.startsWith('Streams/')) return null;
      set(preset.Streams[0], path.split('/').slice(2).join('/'), /^\d+$/.test(value) ? Number(value) : value);
    }
  }
  return null;
}

// What goes by the input, or by what is installed, no schema tells.
const isBeyond = ({ cause = '', path = '' }) =>
  /FFmpeg's encoder|^The input has|^Held by the encoder/.test(cause) || /FrameSizeMode must be one of \d/.test(cause) || path === '';

test('each setting of each codec is restricted alike by the schema and by the program', async () => {
  const tried = new Set();
  const rows = [];
  for (const type of Object.keys(nodes)) {
    for (const { name } of report('list', type)[type].filter((codec) => codec.name !== 'auto')) {
      const sheet = report('show', type, name);
      const takes = ([, { constraints }]) => constraints.some(({ path, values }) =>
        path.endsWith(`${nodes[type]}/CodecId`) && values.some(({ value }) => value === name));
      // The first container that takes it, and those that restrict it.
      const all = [...containers].filter(takes);
      const some = all.filter(([, { rules }], i) => i === 0 || rules.some(({ when }) => when.values?.some(({ value }) => value === name)));
      for (const [i, [container, own]] of some.entries()) {
        const settings = settingsOf(type, sheet, own, i === 0 && ['h264', 'aac'].includes(name));
        const values = JSON.stringify([settings, sheet.rules.map(({ when }) => when.path)]);
        if (tried.has(values)) continue;
        tried.add(values);
        const base = await fine(container, type, name);
        for (const [path, candidate] of base === null ? [] : settings) {
          for (const value of new Set(candidate)) rows.push({ base, path: `Streams/0/${path}`, value });
        }
      }
    }
  }
  const different = [];
  const count = { accepted: 0, refused: 0 };
  await inParallel(rows, async ({ base, path, value }) => {
    const preset = structuredClone(base);
    set(preset, path, value);
    // Without a variable bitrate it has no effect, and the program does not mind.
    if (path.endsWith('/Quality')) set(preset, path.replace(/Quality$/, 'RateControl'), 'vbr');
    const accepted = schemaAccepts(preset);
    const wrong = (await problems(preset)).filter((problem) => !accepted || !isBeyond(problem));
    ++count[accepted ? 'accepted' : 'refused'];
    if ((wrong.length === 0) !== accepted) different.push(`${path} in ${JSON.stringify(preset)}: ${wrong[0]?.message ?? 'only the schema refuses'}`);
  });
  assert.deepEqual(different, []);
  assert.ok(count.accepted > 150 && count.refused > 150, JSON.stringify(count));
});
