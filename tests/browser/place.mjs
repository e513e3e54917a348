// What the tests stand on: a folder of models and one of packages, the program on them, and a browser before it.
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { createRequire } from 'node:module';

// run.mjs PROGRAM SOURCE MODULES: the program, the source tree, the folder into which npm installed.
export const [program, source, modules] = process.argv.slice(2);
if (!fs.existsSync(path.join(modules, 'node_modules/playwright-core'))) {
  console.error('playwright-core is not there: run prepare first');
  process.exit(77);
}
const { chromium } = createRequire(path.join(modules, 'package.json'))('playwright-core');
const kChromium = ['/usr/bin/chromium', '/usr/bin/chromium-browser'].find((one) => fs.existsSync(one));

export const frame = "version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'";
export const tasks = {
  norm: `<task type='addModelParameter' ${frame} forInstances='false' count='1' name_0='NORM' type_0='String' value_0='WN-100'/>`,
  save: `<task type='saveModel' ${frame}/>`,
  // A program that is refused: an error line.
  refused: `<task type='runMSDOScommand' ${frame} cmd='true' args='' uncup='false' waitafter='0'/>`,
  variable: `<task type='setUserVariableDirect' ${frame} name='SERIES' value='A'/>`,
  ask: `<task type='setUserVariable' ${frame} varType='1' varName='NORM' varValue='first' varDescc='1' varDesc_0='Which &lt;b&gt;norm&lt;/b&gt;?'/>`,
};

export class Place {
  constructor() {
    this.folder = fs.mkdtempSync(path.join(os.tmpdir(), 'kelvane-browser-'));
    this.models = path.join(this.folder, 'models');
    this.packages = path.join(this.folder, 'packages');
    fs.mkdirSync(this.models);
    fs.mkdirSync(this.packages);
  }
  model(name, content = {}) {
    fs.writeFileSync(path.join(this.models, name + '.1'), JSON.stringify({ format: 1, ...content }) + '\n');
  }
  // An assembly TOP of that many parts.
  site(parts) {
    const components = [];
    for (let i = 0; i < parts; i += 1) {
      this.model(`p${i}.prt`);
      components.push({ name: `P${i}`, type: 'prt' });
    }
    this.model('top.asm', { components });
  }
  list(name, body, packed = 'standards') {
    const folder = path.join(this.packages, packed);
    fs.mkdirSync(path.join(folder, 'actionlists'), { recursive: true });
    fs.mkdirSync(path.join(folder, 'system'), { recursive: true });
    fs.writeFileSync(path.join(folder, 'system/index.kvane'), 'Package\n"Größe" & <script>document.title="broken"</script>\n');
    const xml = `<list>\n<head/>\n<body>\n${body}\n</body>\n<filter/>\n<foot/>\n</list>\n`;
    fs.writeFileSync(path.join(folder, 'actionlists', name), xml.replaceAll("'", '"'));
  }
  versions(name) { return fs.readdirSync(this.models).filter((one) => one.startsWith(name)).sort(); }

  start(more = []) {
    this.process = spawn(program, ['ui', '--models', this.models, '--packages', this.packages, ...more], {
      env: { ...process.env, XDG_CACHE_HOME: path.join(this.folder, 'cache'), KELVANE_INSTALLATION: path.join(source, 'installation') },
    });
    this.errors = '';
    this.process.stderr.on('data', (data) => { this.errors += data; });
    this.ended = new Promise((resolve) => this.process.on('exit', resolve));
    return new Promise((resolve, reject) => {
      let text = '';
      this.process.stdout.on('data', (data) => { text += data; if (text.includes('\n')) resolve(text.split('\n')[0]); });
      this.process.on('exit', (code) => reject(new Error(`kelvane ui ended with ${code}: ${this.errors}`)));
    });
  }
  end(signal = 'SIGTERM') { this.process?.kill(signal); return this.ended; }
  async remove() { await this.end(); fs.rmSync(this.folder, { recursive: true, force: true }); }
}

export async function launch() {
  if (!kChromium) throw new Error('there is no chromium');
  return chromium.launch({ executablePath: kChromium, args: ['--no-sandbox'] });
}

// The page of an address, with the faults that it reports.
export async function openPage(browser, address, options = {}) {
  const page = await browser.newPage({ viewport: { width: 1280, height: 800 }, ...options });
  page.setDefaultTimeout(30_000);
  page.faults = [];
  page.on('pageerror', (fault) => page.faults.push(fault.message));
  await page.goto(address);
  return page;
}

export const part = (page, name) => page.locator(`[data-dialog=kvanerunner] [data-name="${name}"]`);
export async function openTool(page, model) {
  await page.click('#openModel');
  await page.fill('#modelsFilter', model);
  await page.keyboard.press('Enter');
  await page.locator('#current', { hasText: model.toUpperCase() }).waitFor();
  await page.click('[data-command=KVANEVisitParametersCmd]');
  await part(page, 'kvaneStart').waitFor();
}
export async function choose(page, name, value) {
  const chooser = part(page, name);
  await chooser.locator(`option[value="${value}"]`).waitFor({ state: 'attached' });
  await chooser.selectOption(value);
}
export const row = (page, name) => page.locator(`.line[data-row="${name}"]`);
// The run is over when the session isn't busy and the bar is full.
export async function waitForRun(page) {
  await page.waitForFunction(() => {
    const bar = document.querySelector('[data-name=kvaneProgressBar] progress');
    return document.querySelector('#busy').hidden && bar && bar.value > 0 && bar.value === bar.max;
  }, null, { timeout: 120_000 });
}
