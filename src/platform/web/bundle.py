#!/usr/bin/python3
"""Makes the one file of the browser edition: the page with its style and scripts, and packed in it the program, its
workers, fonts, examples and guide. The same parts give the same file, byte for byte."""

import argparse
import base64
import gzip
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import guide_pages  # noqa: E402

# What the oldest browsers understand that can run it: they unpack gzip, and compile wasm under the rules below.
TARGETS = "chrome97,firefox113,safari16.4"
MODULES = "/usr/share/nodejs"  # of Debian's packages
FONTS = "/usr/share/fonts/truetype/liberation2"
# Whose work is in the file: the Debian packages that hold what they ask to be told.
PACKAGES = ["emscripten", "fonts-liberation2", "libhwy-dev", "nlohmann-json3-dev", "node-jszip", "node-lie",
            "node-pako", "node-setimmediate"]
NEEDS = ("Vorn needs a browser that is not older than Chromium 97 (Chrome, Edge), Firefox 113 or Safari 16.4. "
         "This one lacks: ")
# Says what is missing where the rest of the page would stay blank.
CHECK = """(function () {
  var lacks = [];
  if (typeof DecompressionStream === 'undefined') lacks.push('unpacking (DecompressionStream)');
  if (typeof WebAssembly === 'undefined') lacks.push('WebAssembly');
  if (typeof Worker === 'undefined') lacks.push('workers');
  if (typeof HTMLDialogElement === 'undefined') lacks.push('dialogs');
  if (lacks.length === 0) return;
  var place = document.getElementById('vorn');
  place.textContent = %s + lacks.join(', ') + '.';
  place.className = 'trouble';
})();
"""
STARTING = "Vorn is starting. Where nothing more comes, the browser is older than Chromium 97, Firefox 113 or Safari 16.4."


def esbuild(entry, kind, *options):
    command = ["esbuild", str(entry), "--bundle", f"--target={TARGETS}", "--minify", "--log-level=warning",
               "--charset=utf8", *options]
    if kind == "js":
        none = entry.parent / "no_stream.cjs"
        command += ["--format=iife", "--platform=neutral", "--main-fields=main", "--legal-comments=none",
                    f"--alias:stream={none}", f"--alias:readable-stream={none}"]
    made = subprocess.run(command, check=True, stdout=subprocess.PIPE, env={"NODE_PATH": MODULES, "PATH": "/usr/bin:/bin"})
    return made.stdout.decode("utf-8")


def in_script(text):
    """A text as it may stand in a script of the page: it must not end that script."""
    return re.sub(r"</(script)", r"<\\/\1", text, flags=re.IGNORECASE).replace("<!--", "<\\!--")


def packed(content):
    return base64.b64encode(gzip.compress(content, compresslevel=9, mtime=0)).decode("ascii")


def block(name, content):
    return f'<script type="application/octet-stream" id="part-{name}">{packed(content)}</script>\n'


def woff2(font):
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / font.name
        copy.write_bytes(font.read_bytes())
        subprocess.run(["woff2_compress", str(copy)], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return copy.with_suffix(".woff2").read_bytes()


def example_files(folder):
    return {path.name: base64.b64encode(path.read_bytes()).decode("ascii")
            for path in sorted(folder.iterdir()) if path.is_file()}


def notices(top):
    parts = ["Vorn\n\n" + (top / "LICENSE").read_text(encoding="utf-8")]
    for package in PACKAGES:
        told = pathlib.Path("/usr/share/doc") / package / "copyright"
        if told.exists():
            parts.append(f"{package}\n\n" + told.read_text(encoding="utf-8", errors="replace"))
    return ("\n\n" + "=" * 78 + "\n\n").join(parts)


def sha256(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode("utf-8")).digest()).decode("ascii") + "'"


def rules(style, scripts):
    """What the page may do: run what is in it, and reach for nothing outside."""
    hashes = " ".join(sha256(script) for script in scripts)
    return ("default-src 'none'; "
            f"script-src {hashes} 'wasm-unsafe-eval'; style-src {sha256(style)}; "
            "img-src data: blob:; worker-src blob:; base-uri 'none'; form-action 'none'")


def replace_once(text, old, new):
    if text.count(old) != 1:
        raise SystemExit(f"index.html must hold {old} once")
    return text.replace(old, new)


def styles(page):
    """The styles of the page in one: those of its parts follow."""
    return "".join(esbuild(page / name, "css") for name in ("style.css", "files.css")).replace("</", "<\\/")


def worker(role, program, page):
    """What a worker runs: the wasm of its program, and the scripts around it."""
    glue = program.with_suffix(".js").read_text(encoding="utf-8")
    around = (page / "worker.js").read_text(encoding="utf-8")
    return {role: program.with_suffix(".wasm").read_bytes(), f"{role}-worker": f"{glue}\n;{around}".encode("utf-8")}


def whole(page, parts):
    style = styles(page)
    check = in_script(CHECK % json.dumps(NEEDS))
    program = in_script(esbuild(page / "main.js", "js"))
    html = (page / "index.html").read_text(encoding="utf-8")
    charset = '<meta charset="utf-8">'
    policy = f'<meta http-equiv="Content-Security-Policy" content="{rules(style, [check, program])}">'
    html = replace_once(html, charset, f"{charset}\n{policy}")
    html = replace_once(html, '<link rel="stylesheet" href="style.css">', f"<style>{style}</style>")
    html = replace_once(html, '<main id="vorn"></main>', f'<main id="vorn">{STARTING}</main>')
    blocks = "".join(block(name, content) for name, content in parts.items())
    return replace_once(html, '<script type="module" src="main.js"></script>',
                        f"<script>{check}</script>\n{blocks}<script>{program}</script>")


def main():
    top = pathlib.Path(__file__).resolve().parents[3]
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--built", type=pathlib.Path, required=True,
                        help="the folder of the programs: of each its wasm, and the script that emscripten made beside it")
    parser.add_argument("--page", type=pathlib.Path, default=top / "src/platform/web/page")
    parser.add_argument("--out", type=pathlib.Path, required=True)
    options = parser.parse_args()
    fonts = pathlib.Path(FONTS)
    parts = {
        **worker("program", options.built / "vorn_web", options.page),
        **worker("studies", options.built / "vorn_web_studies", options.page),
        "font-sans": woff2(fonts / "LiberationSans-Regular.ttf"),
        "font-serif": woff2(fonts / "LiberationSerif-Regular.ttf"),
        "examples": json.dumps(example_files(top / "examples")).encode("utf-8"),
        "guide": guide_pages.guide_html(top / "docs").encode("utf-8"),
        "notices": notices(top).encode("utf-8"),
    }
    options.out.write_text(whole(options.page, parts), encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main()
