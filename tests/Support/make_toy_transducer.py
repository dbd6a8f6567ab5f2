#!/usr/bin/python3
"""Generates an untrained neural model that supports hot words: a low tone is "LO" or, almost as likely, "LOW"; a high tone
is "HI". A transducer of three parts that takes sound in portions of 1.28 s, and 1.41 s of it at a time, like published
ones.

  make_toy_transducer.py FOLDER     needs Debian's python3-onnx
"""
import pathlib
import sys

import numpy
import onnx
from onnx import TensorProto, helper, numpy_helper

MELS = 80
STEP = 8
CHUNK = 128
WINDOW = 141
TOKENS = ["<blk>", "<sos/eos>", "<unk>", "\u2581LO", "\u2581LOW", "\u2581HI", "W"]  # "W" never starts a word.
SIZE = len(TOKENS)
NEVER = -50.0


def tensor(name, kind, shape):
    return helper.make_tensor_value_info(name, kind, shape)


def save(path, nodes, inputs, outputs, constants, notes):
    values = [numpy_helper.from_array(numpy.array(value), name) for name, value in constants.items()]
    graph = helper.make_graph(nodes, path.stem, inputs, outputs, values)
    model = helper.make_model(graph, opset_imports=[helper.make_opsetid("", 13)])
    model.ir_version = 8
    helper.set_model_props(model, {key: str(value) for key, value in notes.items()})
    onnx.checker.check_model(model)
    onnx.save(model, str(path))


def encoder(path):
    """Averages eight frames at a time and scores each token by the energy in its frequency band."""
    weights = numpy.zeros((MELS, SIZE), numpy.float32)
    weights[0:25, 3] = 1 / 25
    weights[0:25, 4] = 1 / 25
    weights[55:80, 5] = 1 / 25
    bias = numpy.array([-6, NEVER, NEVER, 0, -0.5, 0, NEVER], numpy.float32)  # Silence is blank; LO beats LOW.
    save(path, [
        helper.make_node("Slice", ["x", "from", "to", "frames"], ["chunk"]),
        helper.make_node("Reshape", ["chunk", "steps"], ["stepped"]),
        helper.make_node("ReduceMean", ["stepped"], ["mean"], axes=[2], keepdims=0),
        helper.make_node("MatMul", ["mean", "weights"], ["energies"]),
        helper.make_node("Add", ["energies", "bias"], ["encoder_out"]),
        helper.make_node("Identity", ["h"], ["next_h"]),
        helper.make_node("Identity", ["c"], ["next_c"]),
    ], [
        tensor("x", TensorProto.FLOAT, ["N", "T", MELS]),
        tensor("h", TensorProto.FLOAT, [1, "N", 1]),
        tensor("c", TensorProto.FLOAT, [1, "N", 1]),
    ], [
        tensor("encoder_out", TensorProto.FLOAT, ["N", CHUNK // STEP, SIZE]),
        tensor("next_h", TensorProto.FLOAT, [1, "N", 1]),
        tensor("next_c", TensorProto.FLOAT, [1, "N", 1]),
    ], {"weights": weights, "bias": bias, "steps": numpy.array([-1, CHUNK // STEP, STEP, MELS], numpy.int64),
        "from": numpy.array([0], numpy.int64), "to": numpy.array([CHUNK], numpy.int64),
        "frames": numpy.array([1], numpy.int64)}, {
        "model_type": "lstm", "num_encoder_layers": 1, "T": WINDOW, "decode_chunk_len": CHUNK,
        "rnn_hidden_size": 1, "d_model": 1, "version": 1, "model_author": "Talmo",
    })


def decoder(path):
    """No token follows itself: LO and LOW count as the same sound."""
    after = numpy.zeros((SIZE, SIZE), numpy.float32)
    after[3:5, 3:5] = NEVER
    after[5, 5] = NEVER
    save(path, [
        helper.make_node("Gather", ["y", "last"], ["token"], axis=1),
        helper.make_node("Gather", ["after", "token"], ["rows"], axis=0),
        helper.make_node("Squeeze", ["rows", "axes"], ["decoder_out"]),
    ], [tensor("y", TensorProto.INT64, ["N", 2])], [tensor("decoder_out", TensorProto.FLOAT, ["N", SIZE])],
         {"last": numpy.array([1], numpy.int64), "axes": numpy.array([1], numpy.int64), "after": after},
         {"vocab_size": SIZE, "context_size": 2})


def joiner(path):
    save(path, [helper.make_node("Add", ["encoder_out", "decoder_out"], ["logit"])],
         [tensor("encoder_out", TensorProto.FLOAT, ["N", SIZE]), tensor("decoder_out", TensorProto.FLOAT, ["N", SIZE])],
         [tensor("logit", TensorProto.FLOAT, ["N", SIZE])], {}, {"joiner_dim": SIZE})


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    encoder(target / "encoder.onnx")
    decoder(target / "decoder.onnx")
    joiner(target / "joiner.onnx")
    (target / "tokens.txt").write_text("".join(f"{token} {index}\n" for index, token in enumerate(TOKENS)))
    (target / "talmo-model.json").write_text('{"languages": ["en"], "kind": "transducer", "hotWords": "bpe"}\n')
