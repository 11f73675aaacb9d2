"""Runs `tarnwick bom --json` with an empty price list on every corpus file that ezdxf reads and
checks the anonymous references against the manifest's `anonymous_refs`: each one the manifest
gives an `effective_name` is counted under that name (the row names the anonymous block in
`resolved_from`, and its quantity is the references of the name plus those of its variants);
each `*U` one without is counted under its own name and marked `unresolved`. With
`--record-names` every row is the manifest's model-space count of that record name.

Usage: dynamic_blocks_match_manifest.py TARNWICK CORPUS_DIR
Prints one line a disagreement and exits 1, or how many anonymous references agree and exits 0;
exits 77 (skipped) when the corpus is not there.
"""
import json
import os
import subprocess
import sys
import tempfile


def bom_rows(tarnwick, path, prices, *options):
    run = subprocess.run([tarnwick, "bom", path, "--prices", prices, "--json", *options],
                         capture_output=True)
    if run.returncode != 0:
        raise RuntimeError("exit %d: %s" % (run.returncode, run.stderr.decode(errors="replace")))
    return {row["name"]: row for row in json.loads(run.stdout.decode("utf-8"))["rows"]}


def resolved_problems(entry, rows):
    problems = []
    direct = entry["modelspace"]["inserts"]["by_name"]
    expected = {}
    for key, anonymous in entry.get("anonymous_refs", {}).items():
        if not anonymous["modelspace"]:
            continue
        name = anonymous["effective_name"]
        if name is None:
            row = rows.get(key)
            if row is None or row["quantity"] != anonymous["modelspace"]:
                problems.append("%s: %s, manifest %d" % (anonymous["name"], row, anonymous["modelspace"]))
            elif anonymous["name"].upper().startswith("*U") and not row.get("unresolved"):
                problems.append("%s is not marked unresolved" % anonymous["name"])
            continue
        lowered = name.lower()
        want = expected.setdefault(lowered, {"quantity": direct.get(lowered, 0), "variants": set()})
        want["quantity"] += anonymous["modelspace"]
        want["variants"].add(anonymous["name"])
        if key in rows:
            problems.append("%s has a row of its own" % anonymous["name"])
    for lowered, want in expected.items():
        row = rows.get(lowered)
        if row is None:
            problems.append("no row %r" % lowered)
            continue
        if row["quantity"] != want["quantity"]:
            problems.append("%r: quantity %d, manifest %d" % (lowered, row["quantity"], want["quantity"]))
        if set(row.get("resolved_from", [])) != want["variants"]:
            problems.append("%r resolved from %s, manifest %s"
                            % (lowered, row.get("resolved_from"), sorted(want["variants"])))
    return problems, sum(1 for a in entry.get("anonymous_refs", {}).values()
                         if a["effective_name"] and a["modelspace"])


def record_name_problems(entry, rows):
    counts = {name: row["quantity"] for name, row in rows.items()}
    by_name = entry["modelspace"]["inserts"]["by_name"]
    anonymous = {k: v for k, v in by_name.items() if k.startswith("*")}
    mine = {k: v for k, v in counts.items() if k.startswith("*")}
    return [] if mine == anonymous else ["--record-names gives %s, manifest %s" % (mine, anonymous)]


def main(argv):
    tarnwick, corpus = argv[1], argv[2]
    if not os.path.exists(os.path.join(corpus, "manifest.json")):
        print("no corpus at %s: skipped" % corpus)
        return 77
    with open(os.path.join(corpus, "manifest.json"), encoding="utf-8") as f:
        manifest = json.load(f)
    failures = 0
    resolved = 0
    with tempfile.TemporaryDirectory() as folder:
        prices = os.path.join(folder, "empty.prc")
        open(prices, "w").close()
        for entry in manifest:
            if not entry.get("read", {}).get("ok"):
                continue
            path = os.path.join(corpus, entry["file"])
            try:
                problems, count = resolved_problems(entry, bom_rows(tarnwick, path, prices))
                problems += record_name_problems(entry, bom_rows(tarnwick, path, prices, "--record-names"))
            except RuntimeError as error:
                problems, count = [str(error)], 0
            resolved += count
            for problem in problems:
                print("%s: %s" % (entry["name"], problem))
                failures += 1
    if failures:
        print("%d disagreements" % failures)
        return 1
    print("%d anonymous block names resolved as the manifest resolves them" % resolved)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
