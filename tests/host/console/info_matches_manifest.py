"""Runs `tarnwick info --json` on every corpus file that ezdxf reads and compares it with the
figures of the corpus manifest: version, code page, encoding, format, and per space the entities
and the references by lower-cased block name (Unicode lower case, as the manifest's `by_name`).

Usage: info_matches_manifest.py TARNWICK CORPUS_DIR
Prints one line a disagreement and exits 1, or prints how many files agree and exits 0; exits 77
(skipped) when the corpus is not there.
"""
import json
import os
import subprocess
import sys


def codec_key(name):
    key = (name or "").lower().replace("-", "").replace("_", "")
    return {"ascii": "cp1252"}.get(key, key)


def expected_encoding(entry):
    """The character set strings must be read in. From AC1021 on DXF strings are UTF-8, while the
    manifest's `encoding` names the drawing's code page there. ezdxf knows no DOS code pages and
    reads them as cp1252; the code page the file names is the one to use."""
    if (entry["raw"]["acadver"] or "") >= "AC1021":
        return "utf8"
    page = (entry["raw"]["dwgcodepage"] or "").lower()
    if page.startswith("dos"):
        return "cp" + page[3:]
    return codec_key(entry["encoding"])


def space_figures(entry, space):
    figures = entry[space]
    inserts = figures["inserts"]
    return figures["entities"], inserts["total"], inserts["by_name"]


def compare(entry, info):
    problems = []
    raw = entry["raw"]
    for key, want, got in (("acadver", raw["acadver"], info["acadver"]),
                           ("dwgcodepage", raw["dwgcodepage"], info["dwgcodepage"]),
                           ("format", entry["format"], info["format"])):
        if want != got:
            problems.append("%s %r, manifest %r" % (key, got, want))
    if expected_encoding(entry) != codec_key(info["encoding"]):
        problems.append("encoding %r, expected %r" % (info["encoding"], expected_encoding(entry)))
    for space in ("modelspace", "paperspace"):
        entities, total, by_name = space_figures(entry, space)
        mine = info[space]
        if mine["entities"] != entities:
            problems.append("%s entities %d, manifest %d" % (space, mine["entities"], entities))
        if mine["inserts"]["total"] != total or mine["inserts"]["by_name"] != by_name:
            problems.append("%s references %s, manifest %s"
                            % (space, mine["inserts"]["by_name"], by_name))
    return problems


def main(argv):
    tarnwick, corpus = argv[1], argv[2]
    if not os.path.exists(os.path.join(corpus, "manifest.json")):
        print("no corpus at %s: skipped" % corpus)
        return 77
    with open(os.path.join(corpus, "manifest.json"), encoding="utf-8") as f:
        manifest = json.load(f)
    failures = 0
    checked = 0
    for entry in manifest:
        if not entry.get("read", {}).get("ok"):
            continue
        path = os.path.join(corpus, entry["file"])
        run = subprocess.run([tarnwick, "info", "--json", path], capture_output=True)
        if run.returncode != 0:
            print("%s: exit %d: %s" % (entry["name"], run.returncode, run.stderr.decode(errors="replace")))
            failures += 1
            continue
        checked += 1
        for problem in compare(entry, json.loads(run.stdout.decode("utf-8"))):
            print("%s: %s" % (entry["name"], problem))
            failures += 1
    print("%d files agree with the manifest" % (checked - failures) if not failures else
          "%d disagreements" % failures)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
