#!/usr/bin/python3
"""tidy.py SOURCE...: clang-tidy over those of the sources that the preset "tidy" knows; any finding fails.

Sources that are compiled alike are looked at in bundles, because most of the time goes into the toolkit's headers: a
bundle includes up to BUNDLE_SIZE of them, so the headers are read once. Where two sources of a bundle clash - a name
in the unnamed namespace, say - the bundle is taken apart until its parts compile. A source is looked at again only when
it, a header, its flags or the configuration has changed since it was last found clean.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

BUILD = pathlib.Path("build/tidy")
BUNDLES = pathlib.Path("build/tidy-bundles")
STAMPS = pathlib.Path("build/tidy-stamps")
BUNDLE_SIZE = 24
COMPILER_ERROR = re.compile(r"^(.*?):\d+:\d+: error: .*\[clang-diagnostic-.*\]$", re.MULTILINE)


class Source:
    """A source with the flags of the first target that compiles it."""

    def __init__(self, name, command, directory, shared_key):
        arguments = shlex.split(command)[1:]
        self.name = name
        self.target_dir = directory / os.path.dirname(arguments[arguments.index("-o") + 1])
        for option in ("-o", "-c"):
            at = arguments.index(option)
            del arguments[at : at + 2]
        self.flags = tuple(arguments)
        text = pathlib.Path(name).read_bytes()
        self.key = hashlib.sha256(b"\0".join([shared_key, repr(self.flags).encode(), text])).hexdigest()
        self.includes_moc = re.search(rb'^#include ".*\.moc"', text, re.MULTILINE)
        self.stamp = STAMPS / (name.replace("/", "__") + ".stamp")

    def is_clean(self):
        return self.stamp.exists() and self.stamp.read_text() == self.key

    def found_clean(self):
        self.stamp.write_text(self.key)


def shared_key(headers):
    """What the outcome for every source depends on."""
    digest = hashlib.sha256(subprocess.run(["clang-tidy", "--version"], stdout=subprocess.PIPE, check=True).stdout)
    for name in [".clang-tidy", *headers]:
        digest.update(pathlib.Path(name).read_bytes())
    return digest.digest()


def read_database(names, headers):
    """The wanted sources, each once, and the names that nothing compiles."""
    key = shared_key(headers)
    root = os.getcwd()
    sources = {}
    wanted = set(names)
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        name = os.path.relpath(entry["file"], root)
        if name in wanted and name not in sources:
            sources[name] = Source(name, entry["command"], pathlib.Path(entry["directory"]), key)
    return [sources[name] for name in names if name in sources], [name for name in names if name not in sources]


def generate_mocs(sources):
    """Runs the meta object compiler, and nothing else of the build, for targets whose sources include its output."""
    for target_dir in {source.target_dir for source in sources if source.includes_moc}:
        info = target_dir.with_name(target_dir.name.replace(".dir", "_autogen.dir")) / "AutogenInfo.json"
        subprocess.run(["cmake", "-E", "cmake_autogen", info, "Debug"], stdout=subprocess.DEVNULL, check=True)


def bundles_of(sources):
    """Bundles of about one size for each set of flags, the largest first."""
    alike = {}
    for source in sources:
        alike.setdefault(source.flags, []).append(source)
    bundles = []
    for group in alike.values():
        count = -(-len(group) // BUNDLE_SIZE)
        bundles += [group[len(group) * i // count : len(group) * (i + 1) // count] for i in range(count)]
    return sorted(bundles, key=len, reverse=True)


def write_bundle(bundle):
    names = [source.name for source in bundle]
    path = BUNDLES / (hashlib.sha256("\n".join(names).encode()).hexdigest()[:16] + ".cpp")
    path.write_text("".join(f'#include "{os.path.abspath(name)}" // NOLINT(bugprone-suspicious-include)\n'
                            for name in names))
    return path


def taken_apart(bundle, files):
    """The sources without errors and those with, or else two halves."""
    with_errors = [source for source in bundle if os.path.abspath(source.name) in files]
    if with_errors and len(with_errors) < len(bundle):
        return [source for source in bundle if source not in with_errors], with_errors
    middle = len(bundle) // 2
    return bundle[:middle], bundle[middle:]


def check(bundle):
    """Looks at a bundle and returns whether it is clean. Sources that clash are looked at without the others."""
    path = bundle[0].name if len(bundle) == 1 else write_bundle(bundle)
    run = subprocess.run(["clang-tidy", "--quiet", path, "--", *bundle[0].flags, "-Wno-error", "-ferror-limit=0"], text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    errors = COMPILER_ERROR.findall(run.stdout)
    if errors and len(bundle) > 1:
        print("Taken apart, rename one of the two:", COMPILER_ERROR.search(run.stdout)[0], flush=True)
        return all([check(part) for part in taken_apart(bundle, errors)])
    if run.returncode != 0:
        print(f"clang-tidy: {', '.join(source.name for source in bundle)}\n{run.stdout}", flush=True)
        return False
    for source in bundle:
        source.found_clean()
    return True


def main():
    headers = [name for name in sys.argv[1:] if name.endswith(".h")]
    sources, unknown = read_database([name for name in sys.argv[1:] if name.endswith(".cpp")], headers)
    if unknown:
        print("Not compiled by the tests, hence not checked:", *unknown)
    for directory in (BUNDLES, STAMPS):
        directory.mkdir(parents=True, exist_ok=True)
    generate_mocs(sources)
    bundles = bundles_of([source for source in sources if not source.is_clean()])
    jobs = int(os.environ.get("TIDY_JOBS", len(os.sched_getaffinity(0))))
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        clean = list(pool.map(check, bundles))
    if not all(clean):
        return 1
    print(f"{len(sources)} files clean.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
