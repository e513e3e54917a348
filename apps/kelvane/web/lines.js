// Lists of any length: only the lines in sight are in the page; they are asked for as they come into sight.
import { byId, action, image, make, read } from './basics.js';

const kHeight = 24; // pixels of a line; ui.css says the same
const kSpare = 20; // lines kept above and below what is in sight
const kPause = 80; // milliseconds between two readings

export class Lines {
  // draw(line, element): fills the element of a line. dialog, component: whose lines they are.
  constructor(dialog, component, role, draw) {
    Object.assign(this, { dialog, component, draw, total: 0, from: 0, lines: [], active: -1, reading: false });
    this.body = make('div', { class: 'linesBody' });
    this.element = make('div', { class: 'lines', role, tabindex: '0', 'data-name': component }, this.body);
    this.element.addEventListener('scroll', () => this.look());
    this.sight = new ResizeObserver(() => this.look());
    this.sight.observe(this.element);
  }

  first() { return Math.floor(this.element.scrollTop / kHeight); }
  inSight() { return Math.ceil(this.element.clientHeight / kHeight) + 1; }
  atEnd() { return this.element.scrollTop + this.element.clientHeight >= this.total * kHeight - kHeight; }
  at(index) { return this.lines[index - this.from]; }

  changed(revision) {
    if (this.revision === revision) return;
    this.revision = revision;
    this.stale = true;
    this.look();
  }

  look() {
    const from = Math.max(0, this.first() - kSpare), to = Math.min(this.total, this.first() + this.inSight() + kSpare);
    const covered = this.first() >= this.from && Math.min(this.total, this.first() + this.inSight()) <= this.from + this.lines.length;
    if (!this.stale && covered) return;
    if (this.element.clientHeight === 0) return; // hidden: read when it is shown
    if (this.reading) { this.again = true; return; }
    this.load(from, Math.max(to - from, this.inSight() + 2 * kSpare));
  }

  async load(from, count) {
    this.reading = true;
    this.stale = this.again = false;
    const follows = this.follows && this.atEnd();
    const got = await read('/lines', { dialog: this.dialog, component: this.component, from, count }).catch(() => null);
    if (got) {
      Object.assign(this, { total: got.total, from: got.from, lines: got.lines });
      this.body.style.height = this.total * kHeight + 'px';
      if (follows) this.element.scrollTop = this.total * kHeight;
      this.show();
    }
    setTimeout(() => {
      this.reading = false;
      if (this.again || this.stale) this.look();
    }, kPause);
    if (!got) this.again = true;
  }

  show() {
    const kept = [...this.body.children];
    this.lines.forEach((line, i) => {
      const element = kept[i] ?? this.body.appendChild(make('div', { class: 'line' }));
      element.style.top = (this.from + i) * kHeight + 'px';
      element.id = `${this.dialog}.${this.component}.${i}`;
      element.dataset.line = this.from + i;
      element.classList.toggle('active', this.from + i === this.active);
      element.setAttribute('aria-selected', String(Boolean(line.selected)));
      // One that stays as it is keeps its elements, so that a press meets what it began on.
      const now = JSON.stringify(line) + (this.shape?.() ?? '');
      if (element.drawn !== now) this.draw(line, element);
      element.drawn = now;
    });
    kept.slice(this.lines.length).forEach((element) => element.remove());
    const active = this.body.querySelector('.active');
    if (active) this.element.setAttribute('aria-activedescendant', active.id);
    else this.element.removeAttribute('aria-activedescendant');
  }

  // The line of an event, by its place in the list; -1 without one.
  lineOf(event) {
    const element = event.target.closest('.line');
    return element ? Number(element.dataset.line) : -1;
  }

  activate(index) {
    this.active = Math.max(0, Math.min(index, this.total - 1));
    const top = this.active * kHeight, box = this.element;
    if (top < box.scrollTop) box.scrollTop = top;
    if (top + kHeight > box.scrollTop + box.clientHeight) box.scrollTop = top + kHeight - box.clientHeight;
    this.show();
  }

  // True for a key that moves the active line.
  moves(event) {
    const page = Math.max(1, this.inSight() - 2);
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -this.total, End: this.total };
    if (!(event.key in steps) || event.ctrlKey || event.altKey) return false;
    event.preventDefault();
    const step = steps[event.key];
    this.activate(this.active < 0 && Math.abs(step) === 1 ? 0 : Math.max(this.active, 0) + step);
    return true;
  }
}

function opensMenu(event) { return event.key === 'ContextMenu' || (event.key === 'F10' && event.shiftKey); }

// A tree: nodes are opened and closed, and selected.
export function tree(dialog, name, menu) {
  const lines = new Lines(dialog, name, 'tree', (node, element) => {
    element.setAttribute('role', 'treeitem');
    element.setAttribute('aria-level', node.level + 1);
    element.setAttribute('aria-expanded', String(node.expanded));
    element.className = `line node ${node.type}` + (element.classList.contains('active') ? ' active' : '');
    element.title = node.text;
    const twist = make('span', { class: 'twist', text: node.children ? (node.expanded ? '▾' : '▸') : '' });
    const label = make('span', { class: 'nodeText', text: node.text });
    element.style.paddingInlineStart = node.level * 16 + 'px';
    element.replaceChildren(twist, ...(node.image ? [image(node.image)] : []), label);
  });
  lines.follows = true;
  const tell = (what, node) => node && action({ do: what, dialog, component: name, node: node.name });
  const fold = (node) => node && node.children && tell(node.expanded ? 'collapse' : 'expand', node);
  lines.element.addEventListener('click', (event) => {
    const index = lines.lineOf(event);
    if (index < 0) return;
    lines.activate(index);
    const node = lines.at(index);
    if (event.target.classList.contains('twist')) fold(node);
    else tell('select', node);
  });
  lines.element.addEventListener('keydown', (event) => {
    const node = lines.at(lines.active);
    if (lines.moves(event)) return;
    if (opensMenu(event)) menu(event, lines.body.querySelector('.active') ?? lines.element);
    else if (event.key === 'ArrowRight' && node && !node.expanded) fold(node);
    else if (event.key === 'ArrowLeft' && node && node.expanded) fold(node);
    else if (event.key === 'Enter') tell('activate', node);
    else if (event.key === ' ') tell('select', node);
    else return;
    event.preventDefault();
  });
  lines.element.addEventListener('contextmenu', async (event) => {
    event.preventDefault();
    const node = lines.at(lines.lineOf(event));
    if (node && !node.selected) await tell('select', node);
    menu(event, lines.element);
  });
  return lines;
}

// A table: rows are marked, and their check buttons pressed.
export function table(dialog, name, columns, menu) {
  const cellOf = (cell, column) => {
    const part = cell.component, element = make('span', { class: 'cell', role: 'gridcell' });
    if (column.width === 0) element.classList.add('folded');
    if (cell.text) element.append(make('span', { text: cell.text, title: cell.text }));
    if (!part || !part.shown) return element;
    if (part.kind === 'checkbutton') {
      const box = make('input', { type: 'checkbox', tabindex: '-1', 'aria-label': part.name, disabled: !part.enabled });
      box.checked = part.checked;
      element.append(box);
    } else {
      if (part.image) element.append(image(part.image));
      if (part.text) element.append(make('span', { text: part.text }));
    }
    return element;
  };
  const lines = new Lines(dialog, name, 'grid', (row, element) => {
    element.setAttribute('role', 'row');
    element.dataset.row = row.name;
    element.replaceChildren(...row.cells.map((cell, i) => cellOf(cell, columns()[i])));
    element.style.gridTemplateColumns = template(columns());
  });
  lines.shape = () => template(columns());
  const toggle = (row, column) => {
    const parts = row ? row.cells.map((cell) => cell.component) : [];
    const part = column == null ? parts.find((one) => one && one.kind === 'checkbutton' && one.enabled) : parts[column];
    if (part) action({ do: 'check', dialog, component: part.name, on: !part.checked });
  };
  const mark = (rows) => action({ do: 'mark', dialog, component: name, rows });
  const marked = () => lines.lines.filter((row) => row.selected).map((row) => row.name);
  let anchor = -1;
  lines.element.addEventListener('click', (event) => {
    const index = lines.lineOf(event), row = lines.at(index);
    if (!row) return;
    const cell = event.target.closest('.cell');
    const column = cell ? [...cell.parentElement.children].indexOf(cell) : -1;
    lines.activate(index);
    if (event.target.type === 'checkbox') {
      event.preventDefault(); // the session says how it stands
      toggle(row, column);
    } else if (event.ctrlKey || event.metaKey) {
      mark(row.selected ? marked().filter((one) => one !== row.name) : [...marked(), row.name]);
    } else if (event.shiftKey && anchor >= 0) {
      const range = lines.lines.filter((_, i) => (lines.from + i - index) * (lines.from + i - anchor) <= 0);
      mark(range.map((one) => one.name));
    } else mark([row.name]);
    if (!event.shiftKey) anchor = index;
  });
  lines.element.addEventListener('keydown', (event) => {
    const row = lines.at(lines.active);
    if (lines.moves(event)) return;
    if (opensMenu(event)) menu(event, lines.body.querySelector('.active') ?? lines.element);
    else if (event.key === ' ') toggle(row);
    else if (event.key === 'Enter' && row) mark([row.name]);
    else return;
    event.preventDefault();
  });
  lines.element.addEventListener('contextmenu', async (event) => {
    event.preventDefault();
    const row = lines.at(lines.lineOf(event));
    if (row && !row.selected) await mark([row.name]);
    menu(event, lines.element);
  });
  return lines;
}

// The widest column takes what is left.
export function template(columns) {
  const widest = Math.max(...columns.map((column) => column.width));
  let given = false;
  return columns.map((column) => {
    if (column.width === widest && !given) { given = true; return 'minmax(12ch, 1fr)'; }
    return column.width === 0 ? '0' : `${column.width + 2}ch`;
  }).join(' ');
}

// A long text, by its lines.
export function longText(dialog, name) {
  const lines = new Lines(dialog, name, 'list', (line, element) => {
    element.setAttribute('role', 'listitem');
    element.textContent = line.text;
  });
  lines.follows = true;
  lines.element.addEventListener('keydown', (event) => lines.moves(event));
  return lines;
}

// The menu of the right mouse button: its entries are push buttons of the dialog.
export function popUp(dialog, entries, event, anchor) {
  byId('popup')?.remove();
  const back = document.activeElement;
  const leave = () => { menu.remove(); document.removeEventListener('pointerdown', outside, true); back?.focus?.(); };
  const outside = (press) => { if (!menu.contains(press.target)) leave(); };
  const menu = make('div', { id: 'popup', role: 'menu' }, ...entries.filter((one) => one.shown).map((one) =>
    make('button', {
      type: 'button', role: 'menuitem', text: one.text, disabled: !one.enabled, 'data-name': one.name,
      onclick: () => { leave(); action({ do: 'press', dialog, component: one.name }); },
    })));
  menu.addEventListener('keydown', (key) => {
    const items = [...menu.querySelectorAll('button:enabled')], at = items.indexOf(document.activeElement);
    const steps = { ArrowDown: 1, ArrowUp: -1 };
    if (key.key === 'Escape' || key.key === 'Tab') leave();
    else if (key.key in steps) items[(at + steps[key.key] + items.length) % items.length]?.focus();
    else return;
    key.preventDefault();
    key.stopPropagation();
  });
  (anchor.closest('dialog') ?? document.body).append(menu);
  const box = anchor.getBoundingClientRect(), byMouse = event.type === 'contextmenu' && event.clientX > 0;
  const x = byMouse ? event.clientX : box.left + 40, y = byMouse ? event.clientY : Math.min(box.bottom, innerHeight - 40);
  menu.style.left = Math.max(0, Math.min(x, innerWidth - menu.offsetWidth - 8)) + 'px';
  menu.style.top = Math.max(0, Math.min(y, innerHeight - menu.offsetHeight - 8)) + 'px';
  document.addEventListener('pointerdown', outside, true);
  menu.querySelector('button:enabled')?.focus();
}
