// What a person waits for in the page: node figures.mjs PROGRAM SOURCE MODULES. bench/README.md has the figures.
import { choose, launch, openPage, openTool, part, Place, row, tasks, waitForRun } from './place.mjs';

const kTries = 5;
const median = (all) => all.sort((a, b) => a - b)[Math.floor(all.length / 2)];
const tell = (what, times) => console.log(`${what}: ${median(times).toFixed(0)} ms`);

// How long until the page answers to an action, from inside the page: no driver between.
const until = (page, action, condition) => page.evaluate(([doIt, holds]) => new Promise((resolve) => {
  const begin = performance.now(), isSo = new Function(`return ${holds}`);
  const look = () => (isSo() ? resolve(performance.now() - begin) : requestAnimationFrame(look));
  new Function(doIt)();
  look();
}), [action, condition]);

// A tool that is open on an assembly of that many parts.
async function opened(browser, parts, body = tasks.norm, options = []) {
  const place = new Place();
  place.site(parts);
  place.list('norm.xml', body);
  const page = await openPage(browser, await place.start(['--no-programs', ...options]));
  await openTool(page, 'top.asm');
  await choose(page, 'kvaneKVZChooser', 'standards.kvz');
  await row(page, 'P0.PRT').waitFor({ timeout: 120_000 });
  await page.locator('#busy').waitFor({ state: 'hidden', timeout: 120_000 });
  return { place, page };
}

// From the beginning of the navigation to the row in the page, by the page's own clock.
async function views(page) {
  const times = [];
  await page.addInitScript(() => {
    const look = () => {
      if (document.querySelector('[data-row="P0.PRT"]')) window.seen = performance.now();
      else requestAnimationFrame(look);
    };
    requestAnimationFrame(look);
  });
  for (let i = 0; i < kTries; i += 1) {
    await page.reload();
    await page.waitForFunction(() => window.seen);
    times.push(await page.evaluate(() => window.seen));
  }
  return times;
}

const box = '[data-row="P0.PRT"] input';
async function changes(page) {
  const times = [];
  for (let i = 0; i < kTries; i += 1) {
    const was = await page.locator(box).first().isChecked();
    times.push(await until(page, `document.querySelector('${box}').click()`, `document.querySelector('${box}').checked === ${!was}`));
    await page.waitForTimeout(300);
  }
  return times;
}

// The end of a log of 200,000 lines as text, from the key that goes there; then its beginning.
async function ends(page) {
  await part(page, 'kvaneStart').click();
  await waitForRun(page);
  const times = [], lines = '[data-name=kvaneLogTA] .lines';
  const press = (key) => `document.querySelector('${lines}').dispatchEvent(new KeyboardEvent('keydown', { key: '${key}' }))`;
  for (let i = 0; i < kTries; i += 1) {
    times.push(await until(page, press('End'), `[...document.querySelectorAll('${lines} .line')].some((one) => one.dataset.line > 200000)`));
    times.push(await until(page, press('Home'), `document.querySelector('${lines} [data-line="0"]')`));
    await page.waitForTimeout(300);
  }
  return times;
}

const browser = await launch();
for (const parts of [20, 5000]) {
  const { place, page } = await opened(browser, parts);
  try {
    tell(`${parts} rows: first view with the table`, await views(page));
    tell(`${parts} rows: a change`, await changes(page));
  } finally {
    await page.close();
    await place.remove();
  }
}
{
  const { place, page } = await opened(browser, 50, (tasks.variable + '\n').repeat(1400), ['--set', 'kvd_log_as_tree=0']);
  try {
    tell('a log of 200,000 lines: from one end to the other', await ends(page));
  } finally {
    await page.close();
    await place.remove();
  }
}
await browser.close();
