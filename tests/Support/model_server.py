#!/usr/bin/env python3
"""A chat-completion server for the tests, with every fault that a test asks for.

Prints "listening PORT", then a line "request {...}" for every request and "answered {...}" for every answer sent in
full. Each line on its standard input is a JSON object whose members replace those of the behaviour:

  models   what GET /v1/models returns: a list of names, or a fault
  health   what GET /health returns: a status, or a fault
  chat     what POST /v1/chat/completions returns: a list of rules, of which the first whose "when" occurs in the user's
           message applies. A rule is an answer {"answer": TEXT, "finish_reason": …} or a fault

  slots  0 for unlimited concurrent chat requests, 1 to answer one at a time, in any order
  alone  with one slot: nothing else is answered meanwhile either
  free   the names whose held rules are released

A fault: {"status": N, "body": TEXT, "type": …, "headers": {…}}, or {"fault": "hang" | "drip" | "close" | "reset" |
"huge" | "truncate" | "header" | "headers" | "chunks"}: the last three never end. A rule with "held": NAME waits until
"free" has that name, whether or not its client is still connected.
"""

import contextlib
import http.server
import json
import socket
import struct
import sys
import threading

behaviour = {"models": ["test-model"], "health": 404, "chat": [{"answer": "Hello from the model."}], "slots": 0,
             "alone": False, "free": []}
slot = threading.Lock()
changed = threading.Condition()


def say(word, what):
    sys.stdout.write(f"{word} {json.dumps(what)}\n")
    sys.stdout.flush()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def send(self, status, body, kind="application/json", headers=None):
        data = body.encode() if isinstance(body, str) else body
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(data)))
        for name, value in (headers or {}).items():
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(data)

    def misbehave(self, rule):
        fault = rule.get("fault")
        self.close_connection = True
        if fault in ("hang", "drip"):
            if fault == "drip":
                self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n")
            self.connection.settimeout(0.02 if fault == "drip" else None)
            while True:
                try:
                    if self.connection.recv(1) == b"":
                        return
                except TimeoutError:
                    self.wfile.write(b" ")
        elif fault == "reset":
            self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{\"choices\": [")
            self.wfile.flush()
            self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            self.connection.close()
        elif fault == "truncate":
            self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + completion(rule).encode())
        elif fault == "huge":
            self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 52428800\r\n\r\n")
            for _ in range(50):
                self.wfile.write(b" " * 1048576)
        elif fault in ("header", "headers", "chunks"):
            self.wfile.write(b"HTTP/1.1 200 OK\r\n" + (b"Transfer-Encoding: chunked\r\n\r\n" if fault == "chunks" else b""))
            piece = {"header": b"x" * 65536, "headers": b"X-More: and more\r\n" * 4096, "chunks": b"1;y\r\n \r\n" * 8192}
            while True:
                self.wfile.write(piece[fault])
        elif fault == "close":
            pass
        else:
            self.send(rule["status"], rule.get("body", ""), rule.get("type", "application/json"), rule.get("headers"))

    def do_GET(self):
        say("request", {"path": self.path, "headers": dict(self.headers)})
        with slot if behaviour["alone"] else contextlib.nullcontext():
            self.get()

    def get(self):
        wanted = behaviour["models" if self.path.endswith("/models") else "health"]
        if self.path.endswith("/models") and isinstance(wanted, list):
            self.send(200, json.dumps({"object": "list", "data": [{"id": name, "object": "model"} for name in wanted]}))
        elif isinstance(wanted, int):
            self.send(wanted, json.dumps({"status": "ok"} if wanted == 200 else {"error": {"code": wanted}}))
        else:
            self.misbehave(wanted)

    def do_POST(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", "0"))).decode()
        say("request", {"path": self.path, "headers": dict(self.headers), "body": body})
        message = json.loads(body)["messages"][-1]["content"]
        rule = next(rule for rule in behaviour["chat"] if rule.get("when", "") in message)
        with slot if behaviour["slots"] == 1 else contextlib.nullcontext():
            self.chat(rule, message)

    def chat(self, rule, message):
        with changed:
            changed.wait_for(lambda: rule.get("held") in [None, *behaviour["free"]])
        if "answer" in rule and "fault" not in rule:
            self.send(200, completion(rule))
        else:
            self.misbehave(rule)
        say("answered", {"message": message})


def completion(rule):
    choice = {"index": 0, "finish_reason": rule.get("finish_reason", "stop"),
              "message": {"role": "assistant", "content": rule["answer"]}}
    return json.dumps({"id": "1", "object": "chat.completion", "model": "test-model", "choices": [choice]})


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # The tests cause clients to give up.


class Server6(Server):
    address_family = socket.AF_INET6


def main():
    port = int(sys.argv[1]) if len(sys.argv) > 1 else 0
    server = Server6(("::1", port), Handler) if "--v6" in sys.argv else Server(("127.0.0.1", port), Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print("listening", server.server_address[1], flush=True)
    for line in sys.stdin:
        with changed:
            behaviour.update(json.loads(line))
            changed.notify_all()
        print("behaving", flush=True)


main()
