#!/usr/bin/env python3
"""A chat-completion server for the tests, with every fault that a test asks for.

Prints "listening PORT", then a line "request {...}" for every request and "answered {...}" for every answer sent in
full. Each line on its standard input is a JSON object whose members replace those of the behaviour:

  models   what GET /v1/models returns: a list of names, or a fault
  health   what GET /health returns: a status, or a fault
  chat     what POST /v1/chat/completions returns: a list of rules, of which the first whose "when" occurs in the user's
           message applies. A rule is an answer {"answer": TEXT, "finish_reason": …} or a fault

  streams  whether answers are streamed if the client asks for it
  tokens   how many pieces of a paced rule's answer are sent by now

  slots  0 for unlimited concurrent chat requests, 1 to answer one at a time, in any order
  alone  with one slot: nothing else is answered meanwhile either
  free   the names whose held rules are released

A fault: {"status": N, "body": TEXT, "type": …, "headers": {…}}, or {"fault": "hang" | "drip" | "close" | "reset" |
"huge" | "truncate" | "header" | "headers" | "chunks" | "event" | "comments"}: the last five never end. A rule with
"held": NAME waits until "free" has that name, whether or not its client is still connected.

A streamed answer comes in pieces of a word each, or as the rule's "pieces": texts, of which {"thought": TEXT} is one of
the model's reasoning and {"raw": TEXT} is sent as it is. A rule with "paced": true waits for "tokens". With "end":
"none" the stream closes without a mark of its end.

Each prompt is reported as "prompt {...}", with how many of its characters a prompt cache would have held. Each piece is
reported as "sent {...}", and a chat request that its client gives up as "abandoned {...}"; with "leaves":
true a held or paced rule notices at once.
"""

import contextlib
import http.server
import json
import os
import re
import socket
import struct
import sys
import threading

behaviour = {"models": ["test-model"], "health": 404, "chat": [{"answer": "Hello from the model."}], "slots": 0,
             "alone": False, "free": [], "streams": True, "tokens": 0}
cache = ""  # The last prompt.
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
        elif fault in ("header", "headers", "chunks", "event", "comments"):
            ends = {"chunks": b"Transfer-Encoding: chunked\r\n\r\n", "event": b"\r\ndata: ", "comments": b"\r\n"}
            self.wfile.write(b"HTTP/1.1 200 OK\r\n" + ends.get(fault, b""))
            piece = {"header": b"x" * 65536, "headers": b"X-More: and more\r\n" * 4096, "chunks": b"1;y\r\n \r\n" * 8192,
                     "event": b"x" * 65536, "comments": b": still here\n\n" * 4096}
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
        request = json.loads(body)
        message = request["messages"][-1]["content"]
        self.read_prompt(request["messages"])
        rule = next(rule for rule in behaviour["chat"] if rule.get("when", "") in message)
        try:
            with slot if behaviour["slots"] == 1 else contextlib.nullcontext():
                self.chat(rule, request.get("stream") and behaviour["streams"])
            say("answered", {"message": message})
        except ConnectionError:
            say("abandoned", {"message": message})

    def read_prompt(self, messages):
        """As a server with one prompt cache does: only what differs from the prompt before is read."""
        global cache
        prompt = "".join(message["role"] + "\n" + message["content"] + "\n" for message in messages)
        with changed:
            cached = len(os.path.commonprefix([prompt, cache]))
            cache = prompt
        say("prompt", {"characters": len(prompt), "cached": cached})

    def chat(self, rule, streams):
        self.wait_for(lambda: rule.get("held") in [None, *behaviour["free"]], rule)
        if "fault" in rule or "status" in rule:
            self.misbehave(rule)
        elif streams:
            self.stream(rule)
        else:
            self.send(200, completion(rule))

    def wait_for(self, condition, rule):
        """With "leaves", an abandoned request ends at once, as in a server that notices."""
        with changed:
            while not changed.wait_for(condition, 0.02 if rule.get("leaves") else None):
                if rule.get("leaves") and self.is_abandoned():
                    raise ConnectionAbortedError

    def is_abandoned(self):
        try:
            return self.connection.recv(1, socket.MSG_PEEK | socket.MSG_DONTWAIT) == b""
        except BlockingIOError:
            return False

    def stream(self, rule):
        self.send_response(200)
        self.send_header("Content-Type", "text/event-stream")
        self.send_header("Transfer-Encoding", "chunked")
        self.end_headers()
        self.chunk(event({"role": "assistant", "content": None}))
        pieces = rule.get("pieces", re.findall(r"\s*\S+|\s+$", rule.get("answer", "")))
        for number, piece in enumerate(pieces):
            if rule.get("paced"):
                self.wait_for(lambda count=number: behaviour["tokens"] > count, rule)
            if isinstance(piece, dict) and "raw" in piece:
                self.chunk(piece["raw"])
            else:
                self.chunk(event({"reasoning_content": piece["thought"]} if isinstance(piece, dict) else {"content": piece}))
            say("sent", {"piece": number})
        if rule.get("end") != "none":
            self.chunk(event({}, rule.get("finish_reason", "stop")) + "data: [DONE]\n\n")
        self.chunk("")

    def chunk(self, text):
        data = text.encode()
        self.wfile.write(b"%x\r\n%s\r\n" % (len(data), data))


def event(delta, reason=None):
    choice = {"index": 0, "finish_reason": reason, "delta": delta}
    return "data: " + json.dumps({"id": "1", "object": "chat.completion.chunk", "model": "test-model",
                                  "choices": [choice]}) + "\n\n"


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
        sys.stdout.write("behaving\n")  # In one piece: other threads write as well.
        sys.stdout.flush()


main()
