#!/usr/bin/python3
"""Generates an untrained neural model of 3 KB that recognises low, middle and high tones as the words "lo", "mid" and
"hi", to exercise the neural recogniser's whole path. Like published ones of NeMo, it takes sound in portions, of 1.28 s,
and is deaf for the first 0.4 s after a start or reset.

  make_toy_model.py FOLDER     needs Debian's python3-onnx
"""
import pathlib
import sys

import numpy
import onnx
from onnx import TensorProto, helper, numpy_helper

MELS = 80
STEP = 8
CHUNK = 128
DEAF_STEPS = 5
NEVER = -100.0
WORDS = ["\u2581lo", "\u2581hi", "\u2581mid"]
SILENCE = -6.0


def tensor(name, kind, shape):
    return helper.make_tensor_value_info(name, kind, shape)


def graph():
    weights = numpy.zeros((MELS, len(WORDS) + 1), numpy.float32)
    for word, (first, last) in enumerate([(0, 25), (55, 80), (25, 55)]):
        weights[first:last, word] = 1 / (last - first)
    constants = {
        "weights": weights,
        "bias": numpy.array([0, 0, 0, SILENCE], numpy.float32),
        "one": numpy.array([1], numpy.int64),
        "step": numpy.array([STEP], numpy.int64),
        "zero": numpy.array([0], numpy.int64),
        "beginning": numpy.array([[[NEVER if step < DEAF_STEPS else 0] * len(WORDS) + [0]
                                   for step in range(CHUNK // STEP)]], numpy.float32),
        "column": numpy.array([-1, 1, 1], numpy.int64),
    }
    nodes = [
        helper.make_node("AveragePool", ["audio_signal"], ["pooled"], kernel_shape=[STEP], strides=[STEP]),
        helper.make_node("Transpose", ["pooled"], ["frames"], perm=[0, 2, 1]),
        helper.make_node("MatMul", ["frames", "weights"], ["energies"]),
        helper.make_node("Add", ["energies", "bias"], ["warm_scores"]),
        helper.make_node("Equal", ["cache_last_channel_len", "zero"], ["is_cold"]),
        helper.make_node("Cast", ["is_cold"], ["cold"], to=TensorProto.FLOAT),
        helper.make_node("Reshape", ["cold", "column"], ["cold_column"]),
        helper.make_node("Mul", ["cold_column", "beginning"], ["deafness"]),
        helper.make_node("Add", ["warm_scores", "deafness"], ["scores"]),
        helper.make_node("LogSoftmax", ["scores"], ["logprobs"], axis=-1),
        helper.make_node("Mul", ["length", "one"], ["same_length"]),
        helper.make_node("Div", ["same_length", "step"], ["encoded_lengths"]),
        helper.make_node("Identity", ["cache_last_channel"], ["cache_last_channel_next"]),
        helper.make_node("Identity", ["cache_last_time"], ["cache_last_time_next"]),
        helper.make_node("Add", ["cache_last_channel_len", "one"], ["cache_last_channel_next_len"]),
    ]
    cache = ["B", 1, 1, 1]
    inputs = [
        tensor("audio_signal", TensorProto.FLOAT, ["B", MELS, "T"]),
        tensor("length", TensorProto.INT64, ["B"]),
        tensor("cache_last_channel", TensorProto.FLOAT, cache),
        tensor("cache_last_time", TensorProto.FLOAT, cache),
        tensor("cache_last_channel_len", TensorProto.INT64, ["B"]),
    ]
    outputs = [
        tensor("logprobs", TensorProto.FLOAT, ["B", "frames", len(WORDS) + 1]),
        tensor("encoded_lengths", TensorProto.INT64, ["B"]),
        tensor("cache_last_channel_next", TensorProto.FLOAT, cache),
        tensor("cache_last_time_next", TensorProto.FLOAT, cache),
        tensor("cache_last_channel_next_len", TensorProto.INT64, ["B"]),
    ]
    values = [numpy_helper.from_array(value, name) for name, value in constants.items()]
    return helper.make_graph(nodes, "toy", inputs, outputs, values)


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    model = helper.make_model(graph(), opset_imports=[helper.make_opsetid("", 13)])
    model.ir_version = 8
    notes = {"model_type": "EncDecCTCModelBPE", "window_size": CHUNK, "chunk_shift": CHUNK,
             "subsampling_factor": STEP, "vocab_size": len(WORDS), "normalize_type": ""}
    for cache in ("channel", "time"):
        notes.update({f"cache_last_{cache}_dim{dimension}": 1 for dimension in (1, 2, 3)})
    helper.set_model_props(model, {key: str(value) for key, value in notes.items()})
    onnx.checker.check_model(model)
    onnx.save(model, str(folder / "model.onnx"))
    tokens = WORDS + ["<blk>"]
    (folder / "tokens.txt").write_text("".join(f"{token} {index}\n" for index, token in enumerate(tokens)))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
