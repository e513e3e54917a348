// What all parts of the page share: making elements, and telling the session what a person does.
// Texts of the session enter the page by textContent and attributes alone, never as markup.

export function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
    else if (name === 'text') element.textContent = value;
    else if (value === true) element.setAttribute(name, '');
    else if (value !== false && value != null) element.setAttribute(name, value);
  }
  element.append(...children);
  return element;
}

export function setText(element, text) { if (element.textContent !== text) element.textContent = text; }
export function byId(id) { return document.getElementById(id); }
export function image(name) { return make('img', { src: '/image/' + encodeURIComponent(name), alt: '' }); }

export function notice(...content) {
  const shown = make('p', {}, ...content);
  byId('notices').append(shown);
  setTimeout(() => shown.remove(), 8000);
}

// One after the other, in the order in which they were done.
let last = Promise.resolve();
const pending = new Map(); // what was typed and isn't told yet, by input
export function action(what) {
  for (const [input, typed] of pending) if (input !== what.input) { pending.delete(input); send(typed()); }
  const { input, ...told } = what;
  pending.delete(input);
  return send(told);
}
function send(what) {
  last = last.then(async () => {
    try {
      const answer = await fetch('/do', {
        method: 'POST', headers: { 'Content-Type': 'application/json' }, body: JSON.stringify(what),
      });
      if (!answer.ok) notice(await answer.text());
    } catch { /* the stream of changes tells that the session is lost */ }
  });
  return last;
}
// Told before the next action, at the latest when the input is left.
export function typing(input, typed) { pending.set(input, typed); }

export async function read(path, parameters = {}) {
  const answer = await fetch(path + '?' + new URLSearchParams(parameters));
  return answer.ok ? answer.json() : null;
}
