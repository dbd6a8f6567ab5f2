#!/usr/bin/python3
"""Generates a valid model archive and many hostile ones.

  make_archives.py FOLDER
"""
import io
import pathlib
import sys
import tarfile
import zipfile

folder = pathlib.Path(sys.argv[1])
MODEL = b"\x08" + b"x" * 5000
TOKENS = b"<blk> 0\na 1\nb 2\n"


def member(name, content=b"", **changes):
    info = tarfile.TarInfo(name)
    info.size = len(content)
    for key, value in changes.items():
        setattr(info, key, value)
    return info, io.BytesIO(content)


def archive(name, members, mode="w:gz"):
    with tarfile.open(folder / name, mode) as out:
        for info, content in members:
            out.addfile(info, content)


def wrapped(*more):
    return [member("model-2026/", type=tarfile.DIRTYPE, mode=0o755), member("model-2026/model.onnx", MODEL),
            member("model-2026/tokens.txt", TOKENS), *more]


for suffix in ("gz", "bz2", "xz"):
    archive(f"good.tar.{suffix}", wrapped(), f"w:{suffix}")
# Long enough to look like a model.
archive("good-model.tar.gz", wrapped())
archive("flat.tar.gz", [member("model.onnx", MODEL), member("tokens.txt", TOKENS)])
with zipfile.ZipFile(folder / "good.zip", "w") as out:
    out.writestr("model-2026/model.onnx", MODEL)
    out.writestr("model-2026/tokens.txt", TOKENS)
archive("lacking.tar.gz", [member("model-2026/model.onnx", MODEL)])

archive("upwards.tar.gz", wrapped(member("model-2026/../../outside", b"gotcha")))
archive("absolute.tar.gz", wrapped(member("/tmp/talmo-outside", b"gotcha")))
archive("resource.tar.gz", wrapped(member(":talmo-outside/inner", b"gotcha")))
archive("hidden-resource.tar.gz", wrapped(member("./:talmo-outside/inner", b"gotcha")))
archive("symlink.tar.gz", wrapped(member("model-2026/link", type=tarfile.SYMTYPE, linkname="/tmp"),
                                  member("model-2026/link/outside", b"gotcha")))
archive("hardlink.tar.gz", wrapped(member("model-2026/link", type=tarfile.LNKTYPE, linkname="../../../etc/passwd")))
archive("device.tar.gz", wrapped(member("model-2026/device", type=tarfile.CHRTYPE, devmajor=1, devminor=3)))
archive("pipe.tar.gz", wrapped(member("model-2026/pipe", type=tarfile.FIFOTYPE)))
archive("twice.tar.gz", wrapped(member("model-2026/tokens.txt", b"other")))
archive("through-a-file.tar.gz", wrapped(member("model-2026/tokens.txt/inner", b"other")))
archive("deep.tar.gz", wrapped(member("/".join(["model-2026"] + ["a"] * 20), b"x")))
archive("many.tar.gz", wrapped(*[member(f"model-2026/{number}") for number in range(2500)]))
archive("empty.tar.gz", [])
with zipfile.ZipFile(folder / "upwards.zip", "w") as out:
    out.writestr("model-2026/model.onnx", MODEL)
    out.writestr("../outside", "gotcha")
# 100 MB of zeros.
with tarfile.open(folder / "bomb.tar.gz", "w:gz") as out:
    info = tarfile.TarInfo("model-2026/zeros")
    info.size = 100 * 1024 * 1024
    out.addfile(info, open("/dev/zero", "rb"))
# A sparse file of 100 GB, as GNU tar writes it.
with tarfile.open(folder / "holes.tar.gz", "w:gz", format=tarfile.PAX_FORMAT) as out:
    info, content = member("model-2026/holes", b"1\n107374182400\n1\n".ljust(512, b"\0") + b"x" * 512)
    info.pax_headers = {"GNU.sparse.major": "1", "GNU.sparse.minor": "0", "GNU.sparse.name": "model-2026/holes",
                        "GNU.sparse.realsize": "107374182401"}
    out.addfile(info, content)
good = (folder / "good.tar.gz").read_bytes()
(folder / "truncated.tar.gz").write_bytes(good[:len(good) // 2])
(folder / "text.tar.gz").write_bytes(b"<html>Not found</html>" * 20)
(folder / "large.bin").write_bytes(bytes(range(256)) * 8192)
