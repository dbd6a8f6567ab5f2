#!/usr/bin/python3
"""Serves a folder's files on a loopback port and misbehaves as the URL asks.

  file_server.py FOLDER [CERTIFICATE]      with a certificate (and its key in the same file): over TLS

  ?break=N        the first answer ends after N bytes
  ?break=N&always=1   every answer does
  ?stall=N        the first answer stalls after N bytes
  ?fail=K         the first K requests get 503
  ?status=S       every request gets S
  ?plain=1        ranges are ignored
  ?changing=1     the ETag differs each time
  ?weak=1         there is no strong ETag
  ?more=1         more bytes than were announced
  ?elsewhere=1    a resumed download starts at the wrong offset
  ?silent=1       no Content-Length
  ?endless=1      the first answer is a header without end
  ?to=URL         redirects there
"""
import collections
import pathlib
import ssl
import sys
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import parse_qs, urlparse

folder = pathlib.Path(sys.argv[1])
counts = collections.Counter()
lock = threading.Lock()
released = threading.Event()


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *arguments):
        pass

    def do_GET(self):
        address = urlparse(self.path)
        wishes = {key: values[0] for key, values in parse_qs(address.query).items()}
        with lock:
            counts[self.path] += 1
            count = counts[self.path]
            print("request", address.path, self.headers.get("Range", "whole"), self.headers.get("If-Range", "-"),
                  flush=True)
        self.close_connection = True
        if "to" in wishes:
            return self.answer(302, b"", {"Location": wishes["to"]})
        if "endless" in wishes and count == 1:
            return self.send_endless_header()
        if "status" in wishes:
            return self.answer(int(wishes["status"]), b"no")
        if count <= int(wishes.get("fail", 0)):
            return self.answer(503, b"later")
        self.serve((folder / address.path.lstrip("/")).read_bytes(), wishes, count)

    def send_endless_header(self):
        self.wfile.write(b"HTTP/1.1 200 OK\r\nX-Endless: ")
        try:
            while True:
                self.wfile.write(b"a" * 65536)
        except OSError:
            pass

    def serve(self, content, wishes, count):
        mark = f'"mark-{count if "changing" in wishes else 1}"'
        headers = {"Accept-Ranges": "bytes", "ETag": "W/" + mark if "weak" in wishes else mark}
        asked = self.headers.get("Range")
        same = self.headers.get("If-Range") in (None, mark)
        status, begin = 200, 0
        if asked and same and "plain" not in wishes:
            begin = int(asked.removeprefix("bytes=").removesuffix("-"))
            if begin >= len(content):
                return self.answer(416, b"<p>no</p>", {"Content-Range": f"bytes */{len(content)}"})
            place = begin + 1 if "elsewhere" in wishes else begin
            status = 206
            headers["Content-Range"] = f"bytes {place}-{len(content) - 1}/{len(content)}"
        body = content[begin:]
        if "more" in wishes:
            headers["Content-Range"] = f"bytes {begin}-{len(content) - 2}/{len(content) - 1}"
            status = 206
        length = None if "silent" in wishes else len(body)
        first = count == 1 or "always" in wishes
        if first and "break" in wishes:
            return self.answer(status, body[:int(wishes["break"])], headers, length)
        if first and "stall" in wishes:
            self.answer(status, body[:int(wishes["stall"])], headers, length)
            released.wait()
            return
        self.answer(status, body, headers, length)

    def answer(self, status, body, headers={}, length=-1):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name, value)
        if length is not None:
            self.send_header("Content-Length", str(len(body) if length == -1 else length))
        self.send_header("Connection", "close")
        self.end_headers()
        self.wfile.write(body)
        self.wfile.flush()


def print_offer(connection, direction, version, content_type, message_type, data):
    if message_type == ssl._TLSMessageType.CLIENT_HELLO:
        print("offered", "h2" if b"\x02h2" in data else "HTTP/1.1 only", flush=True)


server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
server.daemon_threads = True
if len(sys.argv) > 2:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2])
    context._msg_callback = print_offer
    server.socket = context.wrap_socket(server.socket, server_side=True)
print("listening", server.server_port, flush=True)
server.serve_forever()
