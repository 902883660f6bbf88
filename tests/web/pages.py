"""What all tests of the browser edition share: where the file is, a server on this machine, folders of their own."""

import functools
import http.server
import os
import pathlib
import tempfile
import threading

TOP = pathlib.Path(__file__).resolve().parents[2]
FILE = pathlib.Path(os.environ.get("VORN_HTML", TOP / "build/web/vorn.html"))
EXAMPLES = TOP / "examples"
PATIENCE = int(os.environ.get("VORN_PATIENCE", "60"))  # seconds until something counts as not happening


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


class Server:
    """Serves the file at http://localhost, which browsers trust as they do a page of their own."""

    def __enter__(self):
        handler = functools.partial(QuietHandler, directory=str(FILE.parent))
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.origin = f"http://localhost:{self.server.server_address[1]}"
        self.address = f"{self.origin}/{FILE.name}"
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()


def scratch(what):
    return tempfile.TemporaryDirectory(prefix=f"vorn-{what}-", dir="/var/tmp", ignore_cleanup_errors=True)
