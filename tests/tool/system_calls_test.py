"""Lets every system call of petal on files fail once: system_calls_test.py PETAL SOURCE [CASE...]

A command runs under strace, which lets one call of it fail, at each place in turn. Whatever fails: the command succeeds
and its output is what it always is, or it fails with a message and the output is as it was, or new; and nothing else is
left in the folder.
"""

import concurrent.futures
import contextlib
import os
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77  # for CTest

# How calls fail. Short answers are no failures: what is asked for comes in pieces.
ERRORS = {
    "openat": ["EACCES", "EMFILE"],
    "read": ["EIO", "EINTR"],
    "pread64": ["EIO", "EINTR"],
    "write": ["ENOSPC", "EINTR"],
    "pwrite64": ["ENOSPC", "EINTR"],
    "fsync": ["EIO"],
    "ftruncate": ["EIO"],
    "fallocate": ["ENOSPC", "EOPNOTSUPP"],
    "lseek": ["EIO"],
    "close": ["EIO"],
    "mmap": ["ENOMEM"],
    "newfstatat": ["EACCES", "EIO"],
    "fstat": ["EIO"],
    "access": ["EACCES"],
    "faccessat2": ["EACCES"],
    "readlink": ["EIO"],
    "rename": ["EACCES", "EIO"],
    "renameat2": ["EACCES"],
    "linkat": ["EEXIST", "EPERM"],
    "mkdir": ["EACCES"],
    "fcntl": ["EMFILE"],
    "fchmod": ["EPERM"],
    "fchown": ["EPERM"],
    "getxattr": ["EIO"],
    "listxattr": ["EIO"],
    "fsetxattr": ["ENOSPC"],
    "fremovexattr": ["EIO"],
    "getdents64": ["EIO"],
    "unlink": ["EIO"],
    "brk": ["ENOMEM"],
    "clone3": ["EAGAIN"],
}

ATTRIBUTE = "user.origin"

# The first call of the command itself: what comes before loads it.
BEGINNING = "sigaltstack"

# Without some of them texts have other letters, as for a user who may not read them. A library that they use looks for
# the last one.
SETTINGS_OF_FONTS = re.compile(r"/etc/fonts|/fontconfig|/etc/selinux")

LINE = re.compile(r"^(\d+) +(\w+)\((.*)")

# Under strace a command that is built with the sanitizers cannot look for leaks, nor start what names places in code.
ENVIRONMENT = dict(os.environ, ASAN_OPTIONS="detect_leaks=0:symbolize=0")

# What a sanitizer says when a call of its own fails, which ends the command.
SANITIZER_ENDED = "Sanitizer: CHECK failed"


class Case:
    """A command line, what it reads, and the output that it makes."""

    def __init__(self, name, arguments, inputs, output, old=None):
        self.name = name
        self.arguments = arguments
        self.inputs = inputs
        self.output = output
        self.old = old


def text_of(path):
    with open(path, "rb") as file:
        return file.read()


def run(petal, case, inject=None):
    """Returns the exit code, the messages, the trace, what is in the folder, the output there, and its attributes."""
    with tempfile.TemporaryDirectory(prefix="petal-calls-") as folder:
        for name, content in case.inputs.items():
            with open(os.path.join(folder, name), "wb") as file:
                file.write(content)
        if case.old is not None:
            with open(os.path.join(folder, case.output), "wb") as file:
                file.write(case.old)
            with contextlib.suppress(OSError):  # where there are no attributes
                os.setxattr(file.name, ATTRIBUTE, b"kept")
        with tempfile.NamedTemporaryFile(prefix="petal-trace-") as log:
            words = ["strace", "-f", "-qq", "-y", "-o", log.name]
            if inject:
                call, error, when = inject
                words += ["--seccomp-bpf", "-e", f"trace={call}", "-e", f"inject={call}:error={error}:when={when}"]
            result = subprocess.run(words + [petal] + case.arguments, cwd=folder, capture_output=True, timeout=60,
                                    stdin=subprocess.DEVNULL, env=ENVIRONMENT)
            lines = log.read().decode(errors="replace")
        names = sorted(os.listdir(folder))
        path = os.path.join(folder, case.output)
        output = text_of(path) if os.path.exists(path) else None
        attributes = os.listxattr(path) if os.path.exists(path) else []
        return result.returncode, result.stderr.decode(errors="replace"), lines, names, output, attributes


def kind_of(call, arguments):
    """Calls of one kind are alike for the command: of them the first and the last fail."""
    paths = re.findall(r'"([^"]*)"|\d<([^>]*)>', arguments)
    path = next((a or b for a, b in paths if a or b), "")
    path = re.sub(r"petal-calls-[^/]*|\.petal-\w+|#\d+|/proc/\d+|pipe:\[\d+\]", "*", path)
    if ".so" in path and "petal" not in path:
        path = "a library"
    elif SETTINGS_OF_FONTS.search(path):
        path = "settings of fonts"
    elif "/icu" in path or "/locale" in path:
        path = "a locale"
    return call, path, "O_TMPFILE" in arguments, "O_CREAT" in arguments


def places_of(trace, known):
    """The calls that are made to fail, unless they are of a known kind: name and number, counted from the start of each
    thread."""
    main = None
    counts = {}
    begun = False
    loading = {}
    kinds = {}
    for line in trace.splitlines():
        match = LINE.match(line)
        if not match:
            continue
        thread, call, arguments = match.groups()
        main = main or thread
        number = counts[thread, call] = counts.get((thread, call), 0) + 1
        begun = begun or call == BEGINNING
        loading = loading if begun else dict(counts)
        if begun and call in ERRORS and number > loading.get((main, call), 0):
            kinds.setdefault((thread, kind_of(call, arguments)), []).append((call, number, arguments[:100]))
    places = {}
    for alike in (alike for (_, kind), alike in kinds.items() if kind not in known):
        for place in (alike[0], alike[-1]):
            places.setdefault(place[:2], place)
    known.update(kind for _, kind in kinds)
    return places.values()


def fault_of(case, expected_result, result):
    """What is wrong with a run, or None."""
    code, errors, trace, names, output, attributes = result
    whole = expected_result[4]
    hits = [line for line in trace.splitlines() if "(INJECTED)" in line]
    expected = sorted(set(case.inputs) | {case.output})
    left = [name for name in names if name not in expected]
    if left:
        return f"left behind: {left}"
    if SANITIZER_ENDED in errors and output == case.old:
        return None
    # What is interrupted is repeated.
    of_fonts = [line for line in hits if SETTINGS_OF_FONTS.search(line)]
    if code == 0 and output != case.old and of_fonts and all(" EINTR " in line or line in of_fonts for line in hits):
        return None if output[-8:] == whole[-8:] else "the output has no end"
    if output not in (case.old, whole):
        return f"exit code {code}, and the output is neither old nor new"
    if code == 0 and output != whole:
        return "success, but no new output"
    if code == 0 and attributes != expected_result[5]:
        return f"the output has the attributes {attributes}"
    if code != 0 and not errors.strip():
        return f"exit code {code} without a message"
    return None


def sweep(petal, case, pool, known):
    expected = run(petal, case)
    assert expected[0] == 0 and expected[4], f"{case.name}: {expected[1]}"
    tries = [(call, error, number, arguments) for call, number, arguments in places_of(expected[2], known)
             for error in ERRORS[call]]
    results = pool.map(lambda each: run(petal, case, each[:3]), tries)
    faults = 0
    hits = 0
    for each, result in zip(tries, results):
        hits += "(INJECTED)" in result[2]
        fault = fault_of(case, expected, result)
        if fault:
            faults += 1
            print(f"{case.name}: {each[0]} {each[2]} fails with {each[1]}: {fault}\n    {each[0]}({each[3]}\n"
                  f"    {result[1].strip()[:300]}", *[line for line in result[2].splitlines() if "(INJECTED)" in line],
                  sep="\n    ", flush=True)
    print(f"{case.name}: {len(tries)} calls failed in {hits} runs, {faults} faults", flush=True)
    return faults + (hits < len(tries) * 9 // 10)


def cases(petal, source):
    model = text_of(os.path.join(source, "examples/orders.model.json"))
    designs = {name: text_of(os.path.join(source, "tests/designs/files", name))
               for name in ("shop.uml", "shop.notation", "common.uml")}
    rose = subprocess.run([petal, "export", "-q", "-", "-o", "-"], input=model, capture_output=True, check=True).stdout
    diagram = ["--diagram", "Customers and addresses"]
    yield Case("export, old", ["export", "-q", "m.json", "-o", "out"], {"m.json": model}, "out", b"old")
    yield Case("export, new", ["export", "-q", "m.json", "-o", "out"], {"m.json": model}, "out")
    yield Case("import", ["import", "-q", "shop.uml", "-o", "out"], designs, "out", b"old")
    yield Case("draw svg", ["draw", "m.mdl", "-o", "out.svg"] + diagram, {"m.mdl": rose}, "out.svg", b"old")
    yield Case("draw png", ["draw", "m.mdl", "-o", "out.png"] + diagram, {"m.mdl": rose}, "out.png")
    yield Case("browse", ["browse", "m.mdl", "-o", "out"], {"m.mdl": rose}, "out", b"old")
    yield Case("dump sqlite", ["dump", "-q", "m.mdl", "--sqlite", "out"], {"m.mdl": rose}, "out", b"old")


def can_trace():
    if not shutil.which("strace"):
        return False
    tried = subprocess.run(["strace", "-f", "--seccomp-bpf", "-o", os.devnull, "true"], capture_output=True)
    return tried.returncode == 0


def main():
    petal, source, *wanted = sys.argv[1:]
    if not can_trace():
        print("skipped: there is no strace, or it may not trace here")
        return SKIPPED
    known = set()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return min(1, sum(sweep(petal, case, pool, known) for case in cases(petal, source)
                          if not wanted or case.name in wanted))


if __name__ == "__main__":
    sys.exit(main())
