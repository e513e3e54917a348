// The pictures of the README, of the shipped example: node screenshots.mjs PROGRAM SOURCE MODULES
import fs from 'node:fs';
import path from 'node:path';
import { choose, launch, openPage, openTool, part, Place, row, source, waitForRun } from './place.mjs';

const place = new Place();
fs.cpSync(path.join(source, 'examples/workspace'), place.models, { recursive: true });
fs.cpSync(path.join(source, 'examples/packages'), place.packages, { recursive: true });
const folder = path.join(source, 'docs/images');
fs.mkdirSync(folder, { recursive: true });
const browser = await launch();
try {
  const page = await openPage(browser, await place.start(['--no-programs']));
  await openTool(page, 'gearbox.asm');
  await choose(page, 'kvaneKVZChooser', 'standards.kvz');
  const lists = part(page, 'kvaneActionlistChooser');
  const names = await lists.locator('option').evaluateAll((all) => all.map((one) => one.value));
  await choose(page, 'kvaneActionlistChooser', names.find((name) => name.startsWith('title_block')) ?? names[0]);
  await row(page, 'PINION.PRT').waitFor();
  await page.waitForTimeout(500);
  await page.screenshot({ path: path.join(folder, 'main_dialog.png') });
  await part(page, 'kvaneStart').click();
  await waitForRun(page);
  await page.waitForTimeout(500);
  await page.screenshot({ path: path.join(folder, 'finished_run.png') });
} finally {
  await browser.close();
  await place.remove();
}
