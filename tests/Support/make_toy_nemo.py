#!/usr/bin/python3
"""Generates an untrained transducer like those of NeMo, which recognises low, middle and high tones as "lo", "mid" and
"hi".

  make_toy_nemo.py FOLDER streaming|offline     needs Debian's python3-onnx
"""
import pathlib
import sys

import numpy
import onnx
from onnx import TensorProto, helper, numpy_helper

from make_toy_model import CHUNK, MELS, SILENCE, STEP, tensor

WORDS = ["<unk>", "\u2581lo", "\u2581hi", "\u2581mid"]  # As in published models, no word is number 0.
SIZE = len(WORDS) + 1
BLANK = SIZE - 1
NEVER = -50.0
DURATIONS = [0.0, 1.0, 0.0]  # Always one step.


def save(path, nodes, inputs, outputs, constants, notes=None):
    values = [numpy_helper.from_array(numpy.array(value), name) for name, value in constants.items()]
    graph = helper.make_graph(nodes, path.stem, inputs, outputs, values)
    model = helper.make_model(graph, opset_imports=[helper.make_opsetid("", 13)])
    model.ir_version = 8
    helper.set_model_props(model, {key: str(value) for key, value in (notes or {}).items()})
    onnx.checker.check_model(model)
    onnx.save(model, str(path))


def band_weights():
    weights = numpy.zeros((MELS, SIZE), numpy.float32)
    for word, (first, last) in enumerate([(4, 16), (58, 80), (20, 38)], start=1):
        weights[first:last, word] = 1 / (last - first)
    return weights


def encoder(path, is_streaming):
    """Its output is each token's score, (batch, token, step)."""
    nodes = [
        helper.make_node("AveragePool", ["audio_signal"], ["pooled"], kernel_shape=[STEP], strides=[STEP]),
        helper.make_node("Transpose", ["pooled"], ["frames"], perm=[0, 2, 1]),
        helper.make_node("MatMul", ["frames", "weights"], ["energies"]),
        helper.make_node("Add", ["energies", "bias"], ["scores"]),
        helper.make_node("Transpose", ["scores"], ["outputs"], perm=[0, 2, 1]),
        helper.make_node("Div", ["length", "step"], ["encoded_lengths"]),
    ]
    inputs = [tensor("audio_signal", TensorProto.FLOAT, ["B", MELS, "T"]), tensor("length", TensorProto.INT64, ["B"])]
    outputs = [tensor("outputs", TensorProto.FLOAT, ["B", SIZE, "steps"]),
               tensor("encoded_lengths", TensorProto.INT64, ["B"])]
    notes = {"model_type": "EncDecRNNTBPEModel", "vocab_size": len(WORDS), "subsampling_factor": STEP,
             "normalize_type": "", "pred_rnn_layers": 1, "pred_hidden": 1, "url": "toy" if is_streaming else "toy-tdt"}
    constants = {"weights": band_weights(), "bias": numpy.array([NEVER, 0, 0, 0, SILENCE], numpy.float32),
                 "step": numpy.array([STEP], numpy.int64), "one": numpy.array([1], numpy.int64)}
    if is_streaming:
        notes.update({"window_size": CHUNK, "chunk_shift": CHUNK})
        for cache in ("channel", "time"):
            notes.update({f"cache_last_{cache}_dim{dimension}": 1 for dimension in (1, 2, 3)})
            name = f"cache_last_{cache}"
            nodes.append(helper.make_node("Identity", [name], [name + "_next"]))
            inputs.append(tensor(name, TensorProto.FLOAT, ["B", 1, 1, 1]))
            outputs.append(tensor(name + "_next", TensorProto.FLOAT, ["B", 1, 1, 1]))
        nodes.append(helper.make_node("Add", ["cache_last_channel_len", "one"], ["cache_last_channel_next_len"]))
        inputs.append(tensor("cache_last_channel_len", TensorProto.INT64, ["B"]))
        outputs.append(tensor("cache_last_channel_next_len", TensorProto.INT64, ["B"]))
    save(path, nodes, inputs, outputs, constants, notes)


def decoder(path):
    """No token follows itself."""
    after = numpy.zeros((SIZE, SIZE), numpy.float32)
    for word in range(BLANK):
        after[word, word] = NEVER
    state = [1, "B", 1]
    save(path, [
        helper.make_node("Gather", ["after", "targets"], ["rows"], axis=0),
        helper.make_node("Transpose", ["rows"], ["outputs"], perm=[0, 2, 1]),
        helper.make_node("Identity", ["target_length"], ["prednet_lengths"]),
        helper.make_node("Identity", ["states.1"], ["states"]),
        helper.make_node("Identity", ["state_2"], ["next_state_2"]),
    ], [
        tensor("targets", TensorProto.INT32, ["B", "U"]), tensor("target_length", TensorProto.INT32, ["B"]),
        tensor("states.1", TensorProto.FLOAT, state), tensor("state_2", TensorProto.FLOAT, state),
    ], [
        tensor("outputs", TensorProto.FLOAT, ["B", SIZE, "U"]), tensor("prednet_lengths", TensorProto.INT32, ["B"]),
        tensor("states", TensorProto.FLOAT, state), tensor("next_state_2", TensorProto.FLOAT, state),
    ], {"after": after})


def joiner(path, is_streaming):
    """Offline, how many steps the token lasts follows the scores."""
    durations = [] if is_streaming else DURATIONS
    nodes = [
        helper.make_node("Add", ["encoder_outputs", "decoder_outputs"], ["scores"]),
        helper.make_node("Transpose", ["scores"], ["rows"], perm=[0, 2, 1]),
        helper.make_node("Unsqueeze", ["rows", "axis"], ["tokens"]),
        helper.make_node("Identity", ["tokens"], ["outputs"]) if is_streaming else
        helper.make_node("Concat", ["tokens", "durations"], ["outputs"], axis=3),
    ]
    save(path, nodes, [tensor("encoder_outputs", TensorProto.FLOAT, ["B", SIZE, 1]),
                       tensor("decoder_outputs", TensorProto.FLOAT, ["B", SIZE, 1])],
         [tensor("outputs", TensorProto.FLOAT, ["B", 1, 1, SIZE + len(durations)])],
         {"axis": numpy.array([1], numpy.int64), "durations": numpy.array([[[DURATIONS]]], numpy.float32)})


if __name__ == "__main__":
    if len(sys.argv) != 3 or sys.argv[2] not in ("streaming", "offline"):
        sys.exit(__doc__)
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    streaming = sys.argv[2] == "streaming"
    encoder(target / "encoder.onnx", streaming)
    decoder(target / "decoder.onnx")
    joiner(target / "joiner.onnx", streaming)
    tokens = WORDS + ["<blk>"]
    (target / "tokens.txt").write_text("".join(f"{token} {index}\n" for index, token in enumerate(tokens)))
    kind = "transducer" if streaming else "offline-transducer"
    (target / "talmo-model.json").write_text(f'{{"languages": ["en"], "kind": "{kind}", "hotWords": "bpe"}}\n')
