// The page's own words; those of the dialogs come from the session.
const words = {
  en: {
    windows: 'Windows', noWindow: 'no window is open', open: 'Open model', save: 'Save', close: 'Close window',
    files: 'Files of the run', noFiles: 'none yet', download: 'download', messages: 'Messages', cancel: 'Cancel',
    models: 'Open a model', search: 'part of its name', done: 'Close', busy: 'working', stop: 'Stop after this model',
    lost: 'the session has ended, or cannot be reached', opened: 'The tool opens',
    hint: 'Open a model, then the tool by its entry in the menu above.', question: 'Question', path: 'Path',
    ofPath: { open: 'a file that is there', save: 'a file in a folder that is there', folder: 'a folder that is there' },
    closeDialog: 'Close', rows: 'rows', nodes: 'lines', nothing: 'nothing',
  },
  de: {
    windows: 'Fenster', noWindow: 'kein Fenster ist offen', open: 'Modell öffnen', save: 'Speichern',
    close: 'Fenster schließen', files: 'Dateien des Laufs', noFiles: 'noch keine', download: 'herunterladen',
    messages: 'Meldungen', cancel: 'Abbrechen', models: 'Ein Modell öffnen', search: 'Teil seines Namens',
    done: 'Schließen', busy: 'arbeitet', stop: 'Nach diesem Modell anhalten',
    lost: 'die Sitzung ist zu Ende oder nicht erreichbar', opened: 'Das Werkzeug öffnet',
    hint: 'Ein Modell öffnen, dann das Werkzeug über seinen Eintrag im Menü oben.', question: 'Frage', path: 'Pfad',
    ofPath: { open: 'eine vorhandene Datei', save: 'eine Datei in einem vorhandenen Ordner', folder: 'ein vorhandener Ordner' },
    closeDialog: 'Schließen', rows: 'Zeilen', nodes: 'Zeilen', nothing: 'nichts',
  },
};
let language = 'en';
export function speak(wanted) { language = words[wanted] ? wanted : 'en'; document.documentElement.lang = language; }
export function word(name) { return words[language][name]; }
