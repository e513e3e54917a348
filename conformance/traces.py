#!/usr/bin/env python3
"""Traces of the conformance lists: made with the headless session, and compared with those of another host.

    traces.py record PROGRAM FOLDER [NAME...]   runs the lists by the program `kelvane`, and the sessions of a person;
                                                FOLDER gets NAME.trace and the tables that they write, NAME_TABLE.csv
    traces.py count TRACE...                    the operations of a trace with their codes and how often, as in expected/
    traces.py compare OURS THEIRS [--all]       two traces, or two folders of traces. Exit code 1: they differ

compare puts side by side what the lists asked about each row of the table, whatever the order of the runs and of the
rows, and tells first of all what was answered otherwise. It passes over the dialogs, the message area, files, clock and
environment and what was asked outside of runs, unless --all is said, and over what each machine and each session calls
otherwise: numbers of handles and functions, the user, the folders of models and packages. Numbers count as the same up
to a millionth.
"""
import collections
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import person

PLACE = pathlib.Path(__file__).resolve().parent
TIME = 1_700_000_000
FOLDERS = ("out", "exchange", "pdf", "viewer", "scans")  # that the lists write to
MOST = 12  # differences that are shown of a row
WIDTH = 220

# ---- recording


def environment(root):
    kept = {name: value for name, value in os.environ.items() if name not in ("KELVANE_INSTALLATION", "KVD_CONF_DIR")}
    return {**kept, "ASAN_OPTIONS": "detect_leaks=0", "XDG_CACHE_HOME": str(root / "cache"), "TMPDIR": str(root),
            "TZ": "UTC", "username": "conformance"}


def run(root, *words, told=""):
    done = subprocess.run(words, cwd=root, env=environment(root), input=told, capture_output=True, text=True)
    return done.returncode, done.stdout + done.stderr


def package():
    packed = PLACE / "conformance.kvz"
    return packed if packed.exists() else PLACE / "package"


def lists():
    names = PLACE / "lists.txt"  # beside a package that is packed
    if names.exists():
        return names.read_text().split()
    return sorted(path.stem for path in (PLACE / "package/actionlists").glob("*.xml"))


def sessions():
    return sorted(path.stem for path in (PLACE / "sessions").glob("*.txt"))


def begin(root):
    """Models of its own, and nothing of what ran before: a package's reports go on where they ended."""
    for folder in ("models", "collected", "cache", "packages", "site"):
        shutil.rmtree(root / folder, ignore_errors=True)
    shutil.copytree(PLACE / "models", root / "models")
    for path in (root / "models").iterdir():
        os.utime(path, (TIME, TIME))  # reports tell it
    for folder in FOLDERS:
        (root / "models" / folder).mkdir()


def server_options(program, root, name):
    """A PDM server, new for a list that checks in; else it has the models, and they are checked out before the run."""
    server = ["--vault", "site", "--user", "ann"]
    unlocked = [*server, "--set", "kvd_check_modifyable=0"]
    run(root, program, "vault", "site", "--create")
    if name == "server_checkin":
        return unlocked
    run(root, program, "run", "-q", "--durable", "none", *unlocked, package(), "server_checkin", "models")
    for model in ("PLAN.DRW", "PIN.PRT"):
        run(root, program, "vault", "site", "--get", model, "--models", "models", "--user", "ann")
    shutil.rmtree(root / "cache")
    return [*server, "--check-out"]


def record_list(program, root, name, trace):
    """The CSV files that the list wrote."""
    options = server_options(program, root, name) if name.startswith("server_") else ()
    code, said = run(root, program, "run", "-q", "--no-web", "--no-programs", "--durable", "none", "--collect", "collected",
                     "--trace", trace, "--trace-time", str(TIME), *options, package(), name, "models")
    if code > 1:
        raise SystemExit(f"{name} ended with {code}: {said}")
    return {path.name: path.read_bytes() for path in sorted((root / "collected").rglob("*.csv"))}


def record_session(program, root, name, trace):
    verb, keys, actions = person.session((PLACE / f"sessions/{name}.txt").read_text(), package().stem)
    keys += ["kvd_trace=d:\\traces", f"kvd_trace_time={TIME}"]
    settings = [word for key in keys for word in ("--set", key)]
    if verb == "watch":
        code, said = run(root, program, "watch", "models", "--package", package(), "--durable", "none", *settings,
                         told="\n".join(actions))
        if code > 1:
            raise SystemExit(f"{name} ended with {code}: {said}")
    else:
        (root / "packages").mkdir()
        (root / "packages" / package().name).symlink_to(package())
        words = [program, "ui", "--models", "models", "--packages", "packages", "--no-web", "--no-programs", *settings]
        person.press_all(actions, words, cwd=root, env=environment(root))
    os.replace(next((root / "models/traces").iterdir()), trace)
    return {}


def record(program, root, name, trace):
    """Runs the list, or the session, in the folder root; the tables that it wrote, by their names."""
    begin(root)
    return (record_session if name in sessions() else record_list)(program, root, name, trace)


def record_all(program, folder, names):
    program, folder = str(pathlib.Path(shutil.which(program) or program).resolve()), pathlib.Path(folder).resolve()
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as root:
        for name in names or lists() + sessions():
            for table, content in record(program, pathlib.Path(root), name, folder / f"{name}.trace").items():
                (folder / f"{name}_{table}").write_bytes(content)
            print(folder / f"{name}.trace")
    return 0


# ---- reading

Asked = collections.namedtuple("Asked", "line name words answer")
MODEL = re.compile(r"\bmdl\d+\b")
NUMBERED = re.compile(r"\b(function|thing)\d+\b")
NUMBER = re.compile(r"(?<![\w\"\\.])-?\d+\.?\d*(?:e[+-]?\d+)?(?![\w\".])")
PASSED_OVER = re.compile(r"ProUI|ProMessage|ProMacro|ProNotification|ProEvent|ProWindow|ProDirectory|ProToolkitAppl|(?!pfc)[a-z]")


def questions(path):
    """(run, row, Asked) of each question of the plug-in's, in their order; run is ("standards.kvz", "clean.xml")."""
    open_ones, run_now, row, found = [], None, "", []
    for number, line in enumerate(pathlib.Path(path).read_text(encoding="utf-8").splitlines(), 1):
        mark, _, rest = line.partition(" ")
        if mark == "=":
            word, *texts = re.findall(r'"(?:[^"\\]|\\.)*"|\S+', rest)
            if word == "run":
                run_now, row = tuple(text.strip('"') for text in texts), ""
            elif word == "row":
                row = texts[0].strip('"')
            elif word == "ended":
                run_now = None
        elif mark == ">":
            name, _, words = rest.partition(" ")
            open_ones.append((len(found), number, name, words))
            found.append(None)
        elif mark == "<" and open_ones:
            at, asked_at, name, words = open_ones.pop()
            found[at] = (run_now, row, Asked(asked_at, name, words, rest))
    return [one for one in found if one]


def count(path):
    """Lines "NAME CODE COUNT" of the operations of a trace."""
    counts = collections.Counter((asked.name, asked.answer.split(" ", 1)[0]) for _, _, asked in questions(path))
    return [f"{name} {code} {times}" for (name, code), times in sorted(counts.items()) if name.startswith(("Pro", "pfc"))]


# ---- comparing


def own_words(path, found):
    """What this machine and session alone call so, as a pattern, with what stands for it."""
    words = {}
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines()[:9]:
        word, _, value = line.partition(" ")
        if word in ("packages", "unpacked") and len(value) > 2:
            words[re.escape(value.strip('"'))] = f"<{word}>"
    for run_of, _, asked in found:
        if run_of:
            stem = re.escape(re.sub(r"(?i)\.kvz$", "", run_of[0]))
            words[rf"(?<=<unpacked>){stem}\b"] = words[rf"\b{stem}(?=\.kvz\b)"] = "<package>"
        if asked.name == "ProDirectoryCurrentGet" and asked.answer.startswith("0 "):
            words.setdefault(re.escape(asked.answer[2:].strip('"')), "<models>")
        if asked.name == "environment" and asked.words.lower() == '"username"' and asked.answer != "none":
            words.setdefault(rf"(?<!\w){re.escape(asked.answer.strip(chr(34)))}(?![\w.])", "<user>")
    return {re.compile(word, re.IGNORECASE): sign for word, sign in words.items()}


def model_names(found):
    names = {}
    for _, _, asked in found:
        if asked.name == "ProMdlNameGet" and asked.answer.startswith("0 "):
            names.setdefault(asked.words, "<" + asked.answer[2:].strip('"') + ">")
    return names


def rows(path, everything):
    """The questions by run and row, as they are compared."""
    found = questions(path)
    models, words = model_names(found), own_words(path, found)

    def plain(text):
        text = MODEL.sub(lambda model: models.get(model.group(0), "<model>"), text)
        text = NUMBERED.sub(lambda one: f"<{one.group(1)}>", text)
        for word, sign in words.items():
            text = word.sub(sign, text)
        return text

    all_rows = collections.defaultdict(list)
    for run_of, row, asked in found:
        if everything or (run_of and not PASSED_OVER.match(asked.name)):
            key = (run_of[1], row) if run_of else ("outside of runs", "")
            all_rows[key].append(Asked(asked.line, asked.name, plain(asked.words), plain(asked.answer)))
    return all_rows


def is_same(ours, theirs):
    if ours == theirs:
        return True
    numbers = [[float(number) for number in NUMBER.findall(text)] for text in (ours, theirs)]
    if NUMBER.sub("#", ours) != NUMBER.sub("#", theirs) or len(numbers[0]) != len(numbers[1]):
        return False
    whole = [re.findall(r"^-?\d+", text) for text in (ours, theirs)]
    return whole[0] == whole[1] and all(abs(a - b) <= 1e-6 * max(1, abs(a), abs(b)) for a, b in zip(*numbers))


def cut(text, at):
    start = max(0, at - WIDTH // 3) if len(text) > WIDTH else 0
    return ("... " if start else "") + text[start:start + WIDTH] + (" ..." if len(text) > start + WIDTH else "")


def two_lines(ours, theirs):
    at = next((i for i, (a, b) in enumerate(zip(ours, theirs)) if a != b), min(len(ours), len(theirs)))
    return [f"      ours    {cut(ours, at)}", f"      theirs  {cut(theirs, at)}"]


def compare_row(ours, theirs):
    """Lines that tell what differs in a row: what is answered otherwise first, as it leads to all else."""
    lines, asks = [], []
    keys = [[f"{asked.name} {asked.words}" for asked in side] for side in (ours, theirs)]
    for tag, a, b, c, d in difflib.SequenceMatcher(None, *keys, autojunk=False).get_opcodes():
        if tag == "equal":
            for one, other in zip(ours[a:b], theirs[c:d]):
                if not is_same(one.answer, other.answer):
                    lines.append(f"    {one.name} {cut(one.words, 0)} (lines {one.line}, {other.line})")
                    lines += two_lines(one.answer, other.answer)
            continue
        for one, other in zip(ours[a:b], theirs[c:d]):
            if one.name == other.name and is_same(one.words, other.words) and is_same(one.answer, other.answer):
                continue
            asks += two_lines(f"{one.line}: {one.name} {one.words}", f"{other.line}: {other.name} {other.words}")
        more, side = (ours[a:b][d - c:], "ours  ") if b - a > d - c else (theirs[c:d][b - a:], "theirs")
        asks += [f"      {side}  {one.line}: {cut(one.name + ' ' + one.words, 0)}" for one in more]
    if asks:
        lines.append("    asked otherwise:")
    return lines + asks


def traces(place):
    """A session runs the lists otherwise than they run by themselves: it is compared by itself."""
    place = pathlib.Path(place)
    return [path for path in sorted(place.glob("*.trace")) if path.stem not in sessions()] if place.is_dir() else [place]


def gathered(place, everything):
    everywhere = {}
    for path in traces(place):
        for key, asked in rows(path, everything).items():
            everywhere.setdefault(key, asked)  # of two runs of a list the first one
    if not everywhere:
        raise SystemExit(f"{place}: no run of a list is recorded there")
    return everywhere


def compare(ours_place, theirs_place, everything):
    ours, theirs = gathered(ours_place, everything), gathered(theirs_place, everything)
    common_lists = {key[0] for key in ours} & {key[0] for key in theirs}
    differ = same = 0
    for name in sorted({key[0] for key in ours} ^ {key[0] for key in theirs}):
        print(f"{name}: only {'ours' if any(key[0] == name for key in ours) else 'theirs'} was run")
    for key in sorted((key for key in ours.keys() | theirs.keys() if key[0] in common_lists)):
        where = f"{key[0]}, {key[1] or 'before the first row'}"
        if key not in ours or key not in theirs:
            print(f"{where}: only {'ours' if key in ours else 'theirs'} worked it")
            continue
        lines = compare_row(ours[key], theirs[key])
        same += not lines
        differ += bool(lines)
        if lines:
            print(f"{where}: {len(ours[key])} and {len(theirs[key])} questions")
            print("\n".join(lines[:MOST * 3]))
            if len(lines) > MOST * 3:
                print(f"    ... and {len(lines) - MOST * 3} lines more")
    print(f"{same} rows are the same, {differ} differ")
    return 1 if differ or not same else 0


def main(words):
    everything = "--all" in words
    words = [word for word in words if word != "--all"]
    if len(words) >= 3 and words[0] == "record":
        return record_all(words[1], words[2], words[3:])
    if len(words) >= 2 and words[0] == "count":
        for path in words[1:]:
            print("\n".join(count(path)))
        return 0
    if len(words) == 3 and words[0] == "compare":
        return compare(words[1], words[2], everything)
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
