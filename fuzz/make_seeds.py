#!/usr/bin/python3
"""Creates small initial inputs for the fuzzers.

  make_seeds.py FOLDER     writes FOLDER/NAME/… for each fuzzer NAME that needs them
"""
import io
import json
import pathlib
import struct
import sys
import tarfile
import zipfile

root = pathlib.Path(sys.argv[1])


def seed(fuzzer, name, content, choice=b""):
    """Writes one seed. The fuzzers read their choices from the end of the input."""
    folder = root / fuzzer
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes((content if isinstance(content, bytes) else content.encode()) + choice)


def archives():
    for mode, suffix in (("w", "tar"), ("w:gz", "tar.gz"), ("w:bz2", "tar.bz2"), ("w:xz", "tar.xz")):
        out = io.BytesIO()
        with tarfile.open(fileobj=out, mode=mode, format=tarfile.GNU_FORMAT) as archive:
            for name, kind in (("model/", tarfile.DIRTYPE), ("model/tokens.txt", tarfile.REGTYPE),
                               ("model/link", tarfile.SYMTYPE)):
                info = tarfile.TarInfo(name)
                info.type = kind
                content = b"<blk> 0\n" if kind == tarfile.REGTYPE else b""
                info.size = len(content)
                info.linkname = "../outside" if kind == tarfile.SYMTYPE else ""
                archive.addfile(info, io.BytesIO(content))
        seed("archive", suffix, out.getvalue())
    # One seed per kind of rejection; the fuzzer finds its variations from there.
    file, hard, long = tarfile.REGTYPE, tarfile.LNKTYPE, b"x" * 1990
    for name, members in {"upwards": [("m/../../outside", file, b"x")], "absolute": [("/dev/shm/outside", file, b"x")],
                          "hardlink": [("a", file, b"x"), ("b", hard, b"")], "device": [("a", tarfile.CHRTYPE, b"")],
                          "large": [("a", file, long), ("b", file, b"x" * 9)], "deep": [("a/" * 7 + "b", file, b"x")],
                          "many": [(f"m{number}", file, b"") for number in range(5)],
                          "twice": [("a", file, b"x"), ("a", file, b"y")]}.items():
        out = io.BytesIO()
        with tarfile.open(fileobj=out, mode="w", format=tarfile.USTAR_FORMAT) as archive:
            for member, kind, content in members:
                info = tarfile.TarInfo(member)
                info.type, info.size, info.linkname = kind, len(content), "a" if kind == hard else ""
                archive.addfile(info, io.BytesIO(content))
        seed("archive", name + ".tar", out.getvalue()[:512 * (2 * len(members) + 3)])
    out = io.BytesIO()
    with tarfile.open(fileobj=out, mode="w", format=tarfile.PAX_FORMAT) as archive:
        info = tarfile.TarInfo("m/a")
        info.pax_headers = {"GNU.sparse.major": "1", "GNU.sparse.minor": "0", "GNU.sparse.name": "m/b",
                            "GNU.sparse.realsize": "70000"}
        content = b"1\n60000\n5\n".ljust(512, b"\0") + b"hello"
        info.size = len(content)
        archive.addfile(info, io.BytesIO(content))
    seed("archive", "sparse.tar", out.getvalue())
    for method in (zipfile.ZIP_STORED, zipfile.ZIP_DEFLATED):
        out = io.BytesIO()
        with zipfile.ZipFile(out, "w", method) as archive:
            archive.writestr("model/tokens.txt", "<blk> 0\n")
        seed("archive", f"zip-{method}", out.getvalue())


def catalogues():
    entry = {"id": "zipformer-en", "title": "Zipformer", "engine": "sherpa-onnx", "kind": "zipformer-ctc",
             "hotWords": "bpe", "languages": ["en", "deu"], "address": "https://example.org/model.tar.bz2",
             "size": 1000, "approximateMegabytes": 300, "sha256": "0aF" * 21 + "1", "licence": "Apache 2.0",
             "licenceAddress": "https://example.org/licence", "gives": "English."}
    seed("catalogue", "one", json.dumps({"models": [entry]}), b"\x02")
    seed("catalogue", "two", json.dumps({"models": [entry, {**entry, "id": "b", "address": "http://[::1]/x"}]}), b"\x02")
    seed("catalogue", "tokens", "<blk> 0\na 1\n\u2581the 2\n", b"\x00")
    seed("catalogue", "notes", json.dumps({"languages": ["en"], "kind": "zipformer-ctc", "hotWords": "bpe"}), b"\x01")


def control_lines():
    for name, request in (("insert", {"command": "insert", "text": "a\nb"}), ("settings", {"command": "settings"}),
                          ("recogniser", {"command": "recogniser", "choice": "embedded"}), ("error", {"error": "no"}),
                          ("done", {})):
        seed("control", name, json.dumps(request) + "\n", b"\x00")


def http_answers():
    answers = {
        "plain": "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 2\r\n\r\n{}",
        "old": "HTTP/1.0 404 Not Found\r\n\r\nno",
        "chunked": "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n",
        "continued": "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n",
        "redirect": "HTTP/1.1 302 Found\r\nLocation: /v1/models\r\nContent-Length: 0\r\n\r\n",
        "asking": "HTTP/1.1 401 No\r\nWWW-Authenticate: Basic realm=\"a\"\r\nContent-Length: 0\r\n\r\n",
        "lying": "HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n{}",
        "packed": "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 4\r\n\r\n\x1f\x08\x08\x00",
        "upgrade": "HTTP/1.1 101 Switching\r\nUpgrade: h2c\r\nConnection: upgrade\r\n\r\n",
    }
    for name, answer in answers.items():
        seed("http", name, answer, b"\xff\xff\x00\x00")
        seed("http", name + "-split", answer, b"\x11\x00\x01\x01")


def model_answers():
    answer = {"choices": [{"finish_reason": "stop", "message": {"role": "assistant", "content": "<think>x</think>Yes."}}]}
    seed("model-answer", "answer", json.dumps(answer), b"\x30\x02")
    seed("model-answer", "cut", json.dumps(answer).replace("stop", "length"), b"\x30\x02")
    token = {"choices": [{"delta": {"content": "Yes."}, "finish_reason": None}]}
    stream = "".join(f"data: {json.dumps(each)}\n\n" for each in (token, token))
    seed("model-answer", "stream", stream + "data: [DONE]\n\n", b"\x30\x02")
    seed("model-answer", "stream-crlf", (": x\n\n" + stream).replace("\n", "\r\n"), b"\x05\x02")
    seed("model-answer", "models", json.dumps({"data": [{"id": "embed"}, {"id": "llama"}]}), b"\x30\x02")
    for number, address in enumerate(("http://127.0.0.1:8080/v1", "localhost:11434", "http://[::1]:1234", "127.1")):
        seed("model-answer", f"address-{number}", address, b"\x01\x01")


def settings():
    seed("settings", "full", json.dumps({
        "talmo.aiCleanupEnabled": True, "talmo.textTone": "polite", "talmo.dictionaryWords": ["Talmo"],
        "linux.languageModelAddress": "off", "linux.standInKeys": ["Control_R"], "linux.speechEngine": "automatic",
        "other": [1, 2.5, None, {"a": {}}]}))
    seed("settings", "half", '{"talmo.textTone": "pol')


def sounds():
    def wav(kind, channels, rate, bits, samples, extra=b""):
        block = channels * bits // 8
        head = struct.pack("<HHIIHH", kind, channels, rate, rate * block, block, bits) + extra
        body = b"WAVEfmt " + struct.pack("<I", len(head)) + head + b"data" + struct.pack("<I", len(samples)) + samples
        return b"RIFF" + struct.pack("<I", len(body)) + body
    seed("sound", "pcm16", wav(1, 1, 16000, 16, struct.pack("<8h", 0, 1, -1, 32767, -32768, 5, 6, 7)))
    seed("sound", "pcm24", wav(1, 2, 48000, 24, bytes(range(24))))
    seed("sound", "float", wav(3, 2, 44100, 32, struct.pack("<4f", 0.0, 1.0, 3e38, 3e38)))
    seed("sound", "double", wav(3, 1, 8000, 64, struct.pack("<2d", 0.5, float("nan"))))
    seed("sound", "alaw", wav(6, 1, 8000, 8, bytes(16)))
    seed("sound", "adpcm", wav(17, 1, 8000, 4, bytes(64), struct.pack("<HH", 2, 121)))
    seed("sound", "au", b".snd" + struct.pack(">IIIII", 24, 8, 3, 8000, 1) + bytes(8))


archives()
catalogues()
control_lines()
http_answers()
model_answers()
settings()
sounds()
