// What a person waits for in the page: node figures.mjs PROGRAM SOURCE MODULES. bench/README.md has the figures.
import { choose, launch, openPage, openTool, part, Place, row, tasks } from './place.mjs';

const kTries = 5;
const median = (all) => all.sort((a, b) => a - b)[Math.floor(all.length / 2)];
const tell = (what, times) => console.log(`${what}: ${median(times).toFixed(0)} ms`);

// How long until the page answers to a deed, from inside the page: no driver between.
const until = (page, deed, condition) => page.evaluate(([doIt, holds]) => new Promise((resolve) => {
  const begin = performance.now(), isSo = new Function(`return ${holds}`);
  const look = () => (isSo() ? resolve(performance.now() - begin) : requestAnimationFrame(look));
  new Function(doIt)();
  look();
}), [deed, condition]);

const place = new Place();
place.site(5000);
place.list('norm.xml', tasks.norm);
const browser = await launch();
try {
  const address = await place.start(['--no-programs']);
  const first = [], changes = [];
  const page = await openPage(browser, address);
  for (let i = 0; i < kTries; i += 1) {
    const begin = performance.now();
    await page.reload({ waitUntil: 'commit' });
    await page.locator('[data-command=KVANEVisitParametersCmd]').waitFor();
    first.push(performance.now() - begin);
  }
  tell('first view', first);
  await openTool(page, 'top.asm');
  await choose(page, 'kvaneKVZChooser', 'standards.kvz');
  await row(page, 'P0.PRT').waitFor({ timeout: 120_000 });
  await page.locator('#busy').waitFor({ state: 'hidden', timeout: 120_000 });
  const tables = [];
  for (let i = 0; i < kTries; i += 1) {
    const begin = performance.now();
    await page.reload({ waitUntil: 'commit' });
    await row(page, 'P0.PRT').waitFor();
    tables.push(performance.now() - begin);
  }
  tell('a table of 5,000 rows, page included', tables);
  const box = '[data-row="P0.PRT"] input';
  for (let i = 0; i < kTries; i += 1) {
    const was = await page.locator(box).first().isChecked();
    changes.push(await until(page, `document.querySelector('${box}').click()`, `document.querySelector('${box}').checked === ${!was}`));
  }
  tell('a change', changes);
} finally {
  await browser.close();
  await place.remove();
}
