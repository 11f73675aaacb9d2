"""Prints the corpus manifest's figures that the DXF tests compare, one per line, tab-separated:

  refs   FILE NAME COUNT   model-space references per lower-cased block name (the ASCII-only
                           lowering where the manifest has it, as the module lowers names)
  total  FILE COUNT        INSERTs in the ENTITIES section: model space and the active layout
  blocks FILE NAME         named block definitions (not starting with "*")
  unread FILE              a file ezdxf could not read
  raw    FILE COUNT NAMED  BLOCKs in the BLOCKS section, all and those not starting with "*",
                           from the manifest's tag-level pass (there for every file)

Usage: manifest_figures.py MANIFEST.json
"""
import json
import sys


def main(argv):
    with open(argv[1], encoding="utf-8") as f:
        manifest = json.load(f)
    out = []
    for entry in manifest:
        name = entry["name"]
        raw = entry["raw"]
        out.append("raw\t%s\t%d\t%d" % (name, raw["blocks_section_block_count"],
                                         raw["blocks_section_named_blocks"]))
        if not entry.get("read", {}).get("ok"):
            out.append("unread\t%s" % name)
            continue
        inserts = entry["modelspace"]["inserts"]
        for block, count in inserts.get("by_name_ascii_lower", inserts["by_name"]).items():
            out.append("refs\t%s\t%s\t%d" % (name, block, count))
        out.append("total\t%s\t%d" % (name, entry["raw"]["entities_section_inserts"]))
        for block in entry["block_definitions"]["names"]:
            out.append("blocks\t%s\t%s" % (name, block))
    sys.stdout.write("\n".join(out) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
