// The pages of `kelvane ui` in a real browser: node run.mjs PROGRAM SOURCE MODULES
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { choose, launch, openPage, openTool, part, Place, row, tasks, waitForRun } from './place.mjs';

const cases = {
  async 'a whole run: choose, unselect a row, start, read the log and the files'(browser, place) {
    place.site(3);
    place.list('norm.xml', tasks.norm + tasks.save + tasks.refused);
    const page = await openPage(browser, await place.start(['--no-programs']));
    await openTool(page, 'top.asm');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'norm.xml');
    await row(page, 'P2.PRT').waitFor();
    assert.equal(await page.locator('.table .line').count(), 4);
    await row(page, 'P1.PRT').locator('input').first().click();
    await page.waitForFunction(() => !document.querySelector('[data-row="P1.PRT"] input').checked);
    await part(page, 'kvaneStart').click();
    await waitForRun(page);
    assert.deepEqual(place.versions('p0.prt'), ['p0.prt.1', 'p0.prt.2']);
    assert.deepEqual(place.versions('p1.prt'), ['p1.prt.1']);
    const log = page.locator('#files a', { hasText: 'kvd_log' }).first();
    const answer = await page.request.get(new URL(await log.getAttribute('href'), page.url()).href);
    assert.match(await answer.text(), /P0/);
    // An error node is in the tree, with the look of one.
    const tree = part(page, 'kvaneLogTT');
    await tree.focus();
    await tree.locator('.node').first().waitFor();
    for (let i = 0; i < 40 && !(await tree.locator('.kvaneChildErr').count()); i += 1) {
      await page.keyboard.press('ArrowDown');
      await page.keyboard.press('ArrowRight');
      await page.waitForTimeout(100);
    }
    assert.ok((await tree.locator('.kvaneChildErr .nodeText').count()) > 0, 'an error node');
    return page;
  },

  async 'texts are texts: markup of a package stays what it is'(browser, place) {
    place.site(1);
    place.list('norm.xml', tasks.norm);
    const page = await openPage(browser, await place.start());
    await openTool(page, 'top.asm');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await page.waitForFunction(() => [...document.querySelectorAll('textarea')].some((one) => one.value.includes('<script>')));
    assert.equal(await page.title(), 'Kelvane User');
    return page;
  },

  async 'a question shuts off the rest until it is answered by keys alone'(browser, place) {
    place.site(1);
    place.list('ask.xml', tasks.ask);
    const page = await openPage(browser, await place.start());
    await openTool(page, 'p0.prt');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'ask.xml');
    await row(page, 'P0.PRT').waitFor();
    await part(page, 'kvaneStart').click();
    const question = page.locator('[data-dialog=kvd_question]');
    await question.waitFor();
    await question.getByText('Which <b>norm</b>?').waitFor();
    const panel = question.locator('[data-name=kvaneUVInputPanel]');
    await panel.fill('WN-200');
    await panel.press('Tab');
    await page.keyboard.press('Enter'); // OK has the focus
    await question.waitFor({ state: 'detached' });
    return page;
  },

  async 'the side dialogs: history, filter, information, the menu of the right button, and the indicator'(browser, place) {
    place.site(2);
    place.list('norm.xml', tasks.norm + tasks.save);
    const checks = ['--set', 'kvd_check_parameter=NORM', '--set', 'kvd_check_parameter_value=WN-1'];
    const page = await openPage(browser, await place.start(checks));
    await openTool(page, 'top.asm');
    const warning = page.locator('#indicator .warning');
    await warning.getByText('NORM is not set to WN-1').waitFor();
    await page.waitForFunction(() => document.querySelector('#indicator img').naturalWidth > 0);
    await part(page, 'kvaneInfo').click();
    const info = page.locator('[data-dialog=kvaneinfo]');
    await info.getByText('kvd_main.cfg: kvd_kvz_path').waitFor();
    await info.locator('[data-name=kvaneInfoOkBtn]').click();
    await info.waitFor({ state: 'detached' });
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'norm.xml');
    await row(page, 'P0.PRT').waitFor();
    await row(page, 'P0.PRT').click({ button: 'right' });
    await page.locator('#popup [data-name=SelectNoneBtn_MenuRMBChooser]').click();
    await page.waitForFunction(() => !document.querySelector('.table .line input:checked'));
    await part(page, 'LargeTable').locator('.lines').press('Shift+F10');
    await page.locator('#popup [data-name=SelectAllBtn_MenuRMBChooser]').click();
    await page.waitForFunction(() => document.querySelectorAll('.table .line input:checked').length >= 3);
    await row(page, 'P0.PRT').click({ button: 'right' });
    await page.locator('#popup [data-name=HistoryBtn_MenuRMBChooser]').click();
    const history = page.locator('[data-dialog=kvanehistory]');
    await history.waitFor();
    await page.keyboard.press('Escape'); // the window's cross
    await history.waitFor({ state: 'detached' });
    await part(page, 'kvaneExtFilter').click();
    const filter = page.locator('[data-dialog=kvanefilter]');
    await filter.waitFor();
    await filter.locator('[data-name=kvaneFilterOkBtn]').click();
    await filter.waitFor({ state: 'detached' });
    return page;
  },

  async 'two pages follow one run, and one that closes in its middle disturbs nothing'(browser, place) {
    place.site(40);
    place.list('norm.xml', tasks.norm + tasks.save);
    const address = await place.start();
    const page = await openPage(browser, address), other = await openPage(browser, address), third = await openPage(browser, address);
    await openTool(page, 'top.asm');
    await choose(other, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'norm.xml');
    await row(other, 'P0.PRT').waitFor();
    await part(other, 'kvaneStart').click();
    await third.close();
    await other.waitForFunction(() => document.querySelector('[data-name=kvaneProgressBar] progress').value > 0);
    await other.close();
    await waitForRun(page);
    assert.deepEqual(place.versions('p39.prt'), ['p39.prt.1', 'p39.prt.2']);
    return page;
  },

  async 'a table of 5,000 rows has only those in sight in the page'(browser, place) {
    place.site(5000);
    place.list('norm.xml', tasks.norm);
    const page = await openPage(browser, await place.start());
    await openTool(page, 'top.asm');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await row(page, 'P0.PRT').waitFor({ timeout: 120_000 });
    assert.ok((await page.locator('.table .line').count()) < 200);
    // Rows are seen while the table is still being filled.
    const last = page.locator('.table .line[data-line="5000"]');
    for (let i = 0; i < 200 && !(await last.count()); i += 1) {
      await part(page, 'LargeTable').locator('.lines').press('End');
      await page.waitForTimeout(300);
    }
    assert.equal(await last.count(), 1);
    return page;
  },

  async 'a file question takes a path, says what is wrong with one, and can be left'(browser, place) {
    place.site(1);
    place.list('norm.xml', tasks.norm);
    const page = await openPage(browser, await place.start());
    await openTool(page, 'p0.prt');
    await part(page, 'kvaneInfo').click();
    const info = page.locator('[data-dialog=kvaneinfo]'), question = page.locator('#question');
    await info.locator('[data-name=kvaneInfoSaveBtn]').click();
    await question.getByText('save txt').waitFor();
    assert.match(await question.innerText(), /\*\.txt/);
    await page.keyboard.press('Escape');
    await question.waitFor({ state: 'detached' });
    await info.locator('[data-name=kvaneInfoSaveBtn]').click();
    const path = question.locator('input');
    const proposal = await path.inputValue();
    assert.match(proposal, /kvd_info\.txt$/);
    await path.fill('no such folder/kvd_info.txt');
    await path.press('Enter');
    await page.locator('#notices').getByText("that can't be chosen").waitFor();
    await path.fill('Übersicht <b>.txt'); // in the folder that the dialog starts in
    await path.press('Enter');
    await question.waitFor({ state: 'detached' });
    assert.ok(fs.existsSync(proposal.replace('kvd_info.txt', 'Übersicht <b>.txt')));
    const saved = page.locator('#files a', { hasText: 'Übersicht <b>.txt' }).first();
    const answer = await page.request.get(new URL(await saved.getAttribute('href'), page.url()).href);
    assert.match(await answer.text(), /Installed KVD Version/);
    return page;
  },

  async 'a message waits for its button, and its end begins no run'(browser, place) {
    place.site(2);
    place.list('norm.xml', tasks.norm + tasks.save);
    const alone = ['--set', 'kvd_no_pro_notifications=1', '--set', 'kvd_start_kvz_after_solid_regen_conf='];
    const page = await openPage(browser, await place.start(alone));
    await openTool(page, 'p0.prt');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'norm.xml');
    await row(page, 'P0.PRT').waitFor();
    await page.click('#openModel');
    await page.fill('#modelsFilter', 'p1.prt');
    await page.keyboard.press('Enter');
    await page.locator('#current', { hasText: 'P1.PRT' }).waitFor();
    await part(page, 'kvaneStart').click();
    const question = page.locator('#question');
    await question.getByText('Model that should worked is not current model').waitFor();
    await page.keyboard.press('Escape'); // a message has no way round its button
    assert.equal(await question.count(), 1);
    await page.keyboard.press('Enter');
    await question.waitFor({ state: 'detached' });
    await page.locator('#busy').waitFor({ state: 'hidden' });
    assert.deepEqual([...place.versions('p0.prt'), ...place.versions('p1.prt')], ['p0.prt.1', 'p1.prt.1']);
    return page;
  },

  async 'a log of 200,000 lines is read from either end, and the page goes on answering'(browser, place) {
    place.site(50);
    place.list('log.xml', (tasks.variable + '\n').repeat(1400));
    const page = await openPage(browser, await place.start(['--set', 'kvd_log_as_tree=0', '--set', 'kvd_write_history_in_models=0']));
    await openTool(page, 'top.asm');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'log.xml');
    await row(page, 'P49.PRT').waitFor();
    await part(page, 'kvaneStart').click();
    await waitForRun(page);
    const log = part(page, 'kvaneLogTA').locator('.lines');
    await log.press('End');
    await page.waitForFunction(() => [...document.querySelectorAll('[data-name=kvaneLogTA] .line')].some((one) => one.dataset.line >= 200_000));
    assert.ok((await log.locator('.line').count()) < 200);
    await log.press('Home');
    await log.locator('[data-line="0"]').waitFor();
    await part(page, 'kvaneShowLog').click();
    await log.waitFor({ state: 'hidden' });
    return page;
  },

  async 'Ctrl-C in a run leaves every model whole, and the page says that it is over'(browser, place) {
    place.site(60);
    place.list('norm.xml', tasks.norm + tasks.save);
    const page = await openPage(browser, await place.start());
    await openTool(page, 'top.asm');
    await choose(page, 'kvaneKVZChooser', 'standards.kvz');
    await choose(page, 'kvaneActionlistChooser', 'norm.xml');
    await row(page, 'P0.PRT').waitFor();
    await part(page, 'kvaneStart').click();
    await page.waitForFunction(() => document.querySelector('[data-name=kvaneProgressBar] progress').value > 0);
    await place.end('SIGINT');
    for (const name of fs.readdirSync(place.models).filter((one) => /\.(prt|asm)\.\d+$/.test(one)))
      JSON.parse(fs.readFileSync(path.join(place.models, name), 'utf8'));
    await page.locator('#lost').waitFor();
    return page;
  },
};

const browser = await launch();
const wanted = process.env.KELVANE_BROWSER_CASE ?? '';
let failed = 0;
for (const [name, run] of Object.entries(cases)) {
  if (!name.includes(wanted)) continue;
  const place = new Place();
  const began = Date.now();
  try {
    const page = await run(browser, place);
    assert.deepEqual(page.faults, [], 'faults in the page');
    console.log(`ok    ${name} (${Date.now() - began} ms)`);
  } catch (fault) {
    failed += 1;
    console.log(`FAILED ${name}\n${fault.stack}\n${place.errors ?? ''}`);
  }
  for (const context of browser.contexts()) await context.close();
  await place.remove();
}
await browser.close();
process.exit(failed ? 1 : 0);
