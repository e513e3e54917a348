// The page of `kelvane ui`: follows the session and shows what it tells. docs/ui.md describes what is told.
import { byId, action, image, make, notice, read, setText } from './basics.js';
import { closeDialogs, showDialogs, shownDialogs } from './parts.js';
import { speak, word } from './words.js';

const kMostMessages = 500;
let opened = null; // number of the newest opening that was told; null before the first state
let refused = 0;

function showWords(language) {
  speak(language);
  const texts = {
    windowsTitle: 'windows', filesTitle: 'files', messagesTitle: 'messages', openModel: 'open', saveModel: 'save',
    closeWindow: 'close', hint: 'hint', modelsTitle: 'models', modelsClose: 'done', busyText: 'busy', stop: 'stop', lost: 'lost',
  };
  for (const [id, name] of Object.entries(texts)) setText(byId(id), word(name));
  byId('modelsFilter').placeholder = word('search');
  byId('modelsFilter').setAttribute('aria-label', word('search'));
}

function showMenu(entries) {
  byId('menu').replaceChildren(...entries.map((one) => make('button', {
    type: 'button', title: one.help, 'data-command': one.command, onclick: () => action({ do: 'command', command: one.command }),
  }, ...(one.icon ? [image(one.icon)] : []), make('span', { text: one.text }))));
}

function showWindows(windows) {
  const current = windows.find((one) => one.current);
  setText(byId('current'), current ? current.model : word('noWindow'));
  byId('saveModel').disabled = byId('closeWindow').disabled = !current;
  byId('windows').replaceChildren(...windows.map((one) => make('li', {}, make('button', {
    type: 'button', text: one.model || '–', 'aria-current': one.current ? 'true' : null,
    onclick: () => action({ do: 'window', window: one.number }),
  }))));
}

function showFiles(files) {
  const lines = files.slice().reverse().map((one) => make('li', {},
    make('a', { href: '/file/' + one.id, target: '_blank', rel: 'noopener', text: one.name, title: one.folder + one.name }),
    ' ', make('a', { class: 'download', href: `/file/${one.id}?download=1`, text: '↓', 'aria-label': word('download') + ' ' + one.name, title: word('download') })));
  byId('files').replaceChildren(...(lines.length ? lines : [make('li', { class: 'dim', text: word('noFiles') })]));
}

// What the tool opens at a desk is offered here, each time once.
function showOpened(list) {
  const newest = list.length ? list[list.length - 1].number : 0;
  for (const one of opened == null ? [] : list.filter((each) => each.number > opened)) {
    notice(word('opened') + ' ', one.id == null ? one.name :
      make('a', { href: '/file/' + one.id, target: '_blank', rel: 'noopener', text: one.name }));
  }
  opened = newest;
}

function showMessages(lines, whole) {
  const list = byId('messages');
  if (whole) list.replaceChildren();
  list.append(...lines.slice(-kMostMessages).map((text) => make('li', { text })));
  while (list.children.length > kMostMessages) list.firstChild.remove();
  list.scrollTop = list.scrollHeight;
}

// Message and file questions; those that are dialogs of the tool show themselves.
let questionBox = null;
function showQuestion(question) {
  questionBox?.close();
  questionBox?.remove();
  questionBox = null;
  if (!question || question.kind === 'dialog') return;
  const title = make('h2', { id: 'questionTitle', text: question.title || word('question') });
  questionBox = make('dialog', { id: 'question', 'aria-labelledby': 'questionTitle' }, title);
  if (question.kind === 'message') {
    questionBox.append(make('p', { class: 'said', text: question.text }), make('p', { class: 'tools' },
      ...question.buttons.map((text, i) => make('button', { type: 'button', text, onclick: () => action({ do: 'answer', button: i }) }))));
    questionBox.addEventListener('cancel', (event) => event.preventDefault());
  } else {
    const path = make('input', { type: 'text', value: question.path, 'aria-label': word('path'), autocomplete: 'off' });
    const form = make('form', { onsubmit: (event) => { event.preventDefault(); action({ do: 'path', path: path.value }); } },
      make('p', { class: 'dim', text: [word('ofPath')[question.what], question.filter].filter(Boolean).join(', ') }), path,
      make('p', { class: 'tools' }, make('button', { type: 'submit', text: 'OK' }),
        make('button', { type: 'button', text: word('cancel'), onclick: () => action({ do: 'path', path: null }) })));
    questionBox.append(form);
    questionBox.addEventListener('cancel', (event) => { event.preventDefault(); action({ do: 'path', path: null }); });
  }
  document.body.append(questionBox);
  questionBox.showModal();
  questionBox.querySelector('input, button')?.focus();
}

function showNotice(told) {
  if (told && told.number > refused) notice(told.text);
  if (told) refused = told.number;
}

function showIndicator(told) {
  byId('indicator').replaceChildren(...(told ?? []).map((one) => make('span', { class: 'warning', title: one.help, 'data-name': one.name },
    ...(one.image ? [make('img', { src: '/image/' + encodeURIComponent(one.image), alt: '' })] : []), make('span', { text: one.help }))));
}

const members = {
  language: showWords, menu: showMenu, windows: showWindows, files: showFiles, opened: showOpened, indicator: showIndicator,
  gone: closeDialogs, dialogs: showDialogs, question: showQuestion, notice: showNotice,
  busy: (busy) => { byId('busy').hidden = !busy; document.body.classList.toggle('isBusy', busy); },
};

function show(told, whole) {
  if (whole) {
    if (told.notice) refused = told.notice.number; // of somebody else
    closeDialogs(shownDialogs());
    for (const one of Object.values(told.dialogs ?? {})) one.whole = true;
    opened = null;
  }
  for (const [name, showMember] of Object.entries(members)) if (name in told) showMember(told[name]);
  if (told.messages) showMessages(told.messages, whole);
  document.body.dataset.worked = told.worked ?? document.body.dataset.worked;
}

async function openModels() {
  const all = (await read('/models')) ?? [], list = byId('modelsList'), filter = byId('modelsFilter');
  const draw = () => list.replaceChildren(...all.filter((name) => name.includes(filter.value.toUpperCase())).slice(0, 500).map((name) =>
    make('li', {}, make('button', { type: 'button', text: name, onclick: () => { byId('models').close(); action({ do: 'open', model: name }); } }))));
  filter.value = '';
  filter.oninput = draw;
  filter.onkeydown = (event) => {
    if (event.key !== 'Enter') return;
    event.preventDefault();
    list.querySelector('button')?.click();
  };
  draw();
  byId('models').showModal();
  filter.focus();
}

// The page comes with what was told last, number `since`: the stream then begins with what is new.
function follow(since) {
  const stream = new EventSource('/events?since=' + since);
  stream.addEventListener('open', () => {
    byId('lost').hidden = true;
    document.body.classList.remove('isLost');
  });
  stream.addEventListener('whole', (event) => show(JSON.parse(event.data), true));
  stream.addEventListener('change', (event) => show(JSON.parse(event.data), false));
  stream.addEventListener('error', () => {
    byId('lost').hidden = false;
    document.body.classList.add('isLost');
    if (stream.readyState === EventSource.CLOSED) setTimeout(follow, 2000, 0);
  });
}

byId('openModel').addEventListener('click', openModels);
byId('saveModel').addEventListener('click', () => action({ do: 'save' }));
byId('closeWindow').addEventListener('click', () => action({ do: 'closeWindow' }));
byId('stop').addEventListener('click', () => action({ do: 'stop' }));
const told = JSON.parse(byId('told').textContent);
show(told.state, true);
follow(told.number);
