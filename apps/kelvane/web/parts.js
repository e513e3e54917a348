// Dialogs and their components: each is made once and then follows what the session tells of it.
import { byId, action, image, make, setText, typing } from './basics.js';
import { longText, popUp, table, template, tree } from './lines.js';
import { word } from './words.js';

function face(element, told) {
  element.replaceChildren(...(told.image ? [image(told.image)] : []), ...(told.text ? [make('span', { text: told.text })] : []));
}

// The name that a person hears for a component without a text: that of the label beside it.
function spoken(view, told) {
  return told.text || view.parts.get(told.name + 'Lbl')?.told.text || view.parts.get(told.name.replace('Chooser', 'Lbl'))?.told.text ||
    told.name;
}

const kinds = {
  layout(view, told) {
    const element = make('div', { class: 'layout', role: 'group' });
    return { element, inside: element, show: (now) => { element.hidden = !now.shown || !now.mapped; } };
  },
  label() {
    const element = make('span', { class: 'label' });
    return { element, show: (now) => face(element, now) };
  },
  pushbutton(view, told) {
    const element = make('button', { type: 'button', onclick: () => action({ do: 'press', dialog: view.name, component: told.name }) });
    return {
      element,
      show: (now) => {
        face(element, now);
        element.disabled = !now.enabled;
        element.setAttribute('aria-label', spoken(view, now));
        element.title = now.text || '';
      },
    };
  },
  checkbutton(view, told) {
    const box = make('input', { type: 'checkbox' });
    const text = make('span', {});
    const element = make('label', { class: 'check' }, box, text);
    box.addEventListener('click', (event) => {
      event.preventDefault(); // the session says how it stands
      action({ do: 'check', dialog: view.name, component: told.name, on: !view.parts.get(told.name).told.checked });
    });
    return {
      element,
      show: (now) => {
        setTimeout(() => { box.checked = now.checked; }); // behind the click's own undoing
        box.disabled = !now.enabled;
        face(text, now);
        box.setAttribute('aria-label', spoken(view, now));
      },
    };
  },
  optionmenu(view, told) {
    const element = make('select', {
      onchange: () => action({ do: 'choose', dialog: view.name, component: told.name, name: element.value }),
    });
    let choices = '';
    return {
      element,
      show: (now) => {
        if (choices !== JSON.stringify(now.choices)) {
          element.replaceChildren(...now.choices.map((one) => make('option', { value: one.name, text: one.text })));
          choices = JSON.stringify(now.choices);
        }
        element.value = now.selected[0] ?? '';
        element.disabled = !now.enabled || now.choices.length === 0;
        element.setAttribute('aria-label', spoken(view, now));
      },
    };
  },
  list() {
    const element = make('ul', { class: 'list', tabindex: '0' });
    return { element, show: (now) => element.replaceChildren(...now.choices.map((one) => make('li', { text: one.text }))) };
  },
  progressbar() {
    const bar = make('progress', {}), text = make('span', { class: 'progressText' });
    const element = make('div', { class: 'progress' }, bar, text);
    return {
      element,
      show: (now) => {
        bar.max = Math.max(1, now.maximum - now.minimum);
        bar.value = now.value - now.minimum;
        setText(text, `${now.value} / ${now.maximum}`);
        bar.setAttribute('aria-label', now.name);
      },
    };
  },
  textarea(view, told) {
    const area = make('textarea', { readonly: true, rows: '3', 'aria-label': told.name });
    const element = make('div', { class: 'text' }, area);
    let long = null;
    return {
      element,
      show: (now) => {
        const isLong = typeof now.text !== 'string';
        if (isLong && !long) element.append((long = longText(view.name, told.name)).element);
        area.hidden = isLong;
        if (long) long.element.hidden = !isLong;
        if (isLong) long.changed(now.text.revision + ' ' + now.text.length);
        else if (area.value !== now.text) {
          const end = area.scrollTop + area.clientHeight >= area.scrollHeight - 4;
          area.value = now.text;
          if (end && area.value.length > 2000) area.scrollTop = area.scrollHeight;
        }
      },
    };
  },
  inputpanel(view, told) {
    const element = make('input', { type: 'text', autocomplete: 'off' });
    let known = null;
    const about = (what) => ({ do: what, dialog: view.name, component: told.name, text: element.value });
    element.addEventListener('input', () => typing(element, () => about('type')));
    element.addEventListener('change', () => action({ ...about('type'), input: element }));
    element.addEventListener('keydown', (event) => {
      if (event.key !== 'Enter') return;
      event.preventDefault();
      action({ ...about('enter'), input: element });
    });
    return {
      element,
      show: (now) => {
        if (now.text !== known) element.value = known = now.text;
        element.disabled = !now.enabled;
        element.setAttribute('aria-label', spoken(view, view.parts.get('kvaneUVValueLabel')?.told ?? now));
      },
    };
  },
  table(view, told) {
    const menu = (event, anchor) => popUp(view.name, view.menuOf(told.name), event, anchor);
    let columns = told.columns;
    const lines = table(view.name, told.name, () => columns, menu);
    const head = make('div', { class: 'head', role: 'row' });
    const element = make('div', { class: 'table' }, head, lines.element);
    return {
      element,
      show: (now) => {
        columns = now.columns;
        head.style.gridTemplateColumns = template(columns);
        head.replaceChildren(...columns.map((one) =>
          make('span', { role: 'columnheader', class: one.width === 0 ? 'folded' : '', text: one.text, title: one.text })));
        lines.element.setAttribute('aria-rowcount', now.size);
        lines.changed(now.revision + ' ' + now.size);
      },
    };
  },
  tree(view, told) {
    const lines = tree(view.name, told.name, (event, anchor) => popUp(view.name, view.menuOf(told.name), event, anchor));
    return { element: lines.element, show: (now) => lines.changed(now.revision + ' ' + now.size) };
  },
};

class DialogView {
  constructor(name) {
    this.name = name;
    this.parts = new Map();
    this.title = make('h2', { id: 'title.' + name });
    this.icon = make('span', {});
    this.close = make('button', { type: 'button', class: 'cross', text: '×', onclick: () => action({ do: 'close', dialog: name }) });
    this.body = make('div', { class: 'dialogBody' });
    const head = make('div', { class: 'dialogHead' }, this.icon, this.title, this.close);
    this.element = make('dialog', { class: 'tool', 'data-dialog': name, 'aria-labelledby': 'title.' + name }, head, this.body);
    this.element.addEventListener('cancel', (event) => { event.preventDefault(); action({ do: 'close', dialog: name }); });
  }

  // A modal one shuts off what lies below it.
  open(modal) {
    const back = document.activeElement;
    if (this.element.isConnected && this.modal === modal && this.element.open) return;
    this.modal = modal;
    (modal ? document.body : byId('desk')).append(this.element);
    if (this.element.open) this.element.close();
    if (modal) {
      this.element.showModal();
      this.element.querySelector('.dialogBody :is(input, select, button):not(:disabled)')?.focus();
    } else {
      this.element.show();
      if (back && back !== document.body) back.focus();
      else document.activeElement?.blur(); // its first button is nobody's choice
    }
  }

  leave() {
    this.element.close();
    this.element.remove();
  }

  menuOf(name) {
    const menus = [...this.parts.values()].filter((one) => one.told.kind === 'menu' && one.told.inside === name);
    const names = menus.map((one) => one.told.name);
    return [...this.parts.values()].filter((one) => names.includes(one.told.inside)).map((one) => one.told);
  }

  show(told) {
    setText(this.title, told.title);
    if (this.shownIcon !== told.icon) this.icon.replaceChildren(...(told.icon ? [image(told.icon)] : []));
    this.shownIcon = told.icon;
    this.close.setAttribute('aria-label', word('closeDialog'));
    if (told.whole) {
      this.parts.clear();
      this.body.replaceChildren();
    }
    for (const one of told.components) {
      const known = this.parts.get(one.name);
      if (known) known.told = one;
      else this.parts.set(one.name, { told: one });
    }
    for (const one of told.components) this.showPart(one);
    this.open(told.modal);
  }

  showPart(told) {
    const part = this.parts.get(told.name), above = this.parts.get(told.inside);
    if (above?.told.kind === 'menu' || told.kind === 'menu') return; // they stand in pop-up menus
    if (!part.element) {
      Object.assign(part, kinds[told.kind](this, told));
      part.element.dataset.name = told.name;
      part.element.classList.add('kind-' + told.kind);
      const inside = above?.inside ?? this.body;
      if (told.kind === 'table' && above) inside.append(make('div', { class: 'row' }, ...inside.children)); // what stands above it
      inside.append(part.element);
    }
    part.element.hidden = !told.shown;
    part.show(told);
  }
}

const dialogs = new Map();
export function showDialogs(told) {
  for (const [name, one] of Object.entries(told)) {
    if (one.whole && dialogs.has(name)) dialogs.get(name).leave(), dialogs.delete(name);
    if (!dialogs.has(name)) dialogs.set(name, new DialogView(name));
    dialogs.get(name).show(one);
  }
  byId('hint').hidden = dialogs.size > 0;
}
export function closeDialogs(names) {
  for (const name of names) {
    dialogs.get(name)?.leave();
    dialogs.delete(name);
  }
  byId('hint').hidden = dialogs.size > 0;
}
export function shownDialogs() { return [...dialogs.keys()]; }
