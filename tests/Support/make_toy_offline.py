#!/usr/bin/python3
"""Generates an untrained model that recognises a whole utterance of low, middle and high tones as "lo", "mid" and "hi".

  make_toy_offline.py FOLDER KIND     needs Debian's python3-onnx

KIND is one that talmo-model.json can name, except for transducers: see make_toy_nemo.py.
"""
import base64
import pathlib
import sys

import numpy
from onnx import TensorProto, helper

from make_toy_model import MELS, SILENCE, STEP, tensor
from make_toy_nemo import NEVER, SIZE, WORDS, band_weights, save

SENSE_VOICE_SILENCE = 4.0  # Its features are those of louder samples.


def scores(frames):
    """The nodes and constants that score each token by the energy in its band of the tensor of that name."""
    nodes = [helper.make_node("MatMul", [frames, "weights"], ["energies"]),
             helper.make_node("Add", ["energies", "bias"], ["scores"])]
    return nodes, {"weights": band_weights(), "bias": numpy.array([NEVER, 0, 0, 0, SILENCE], numpy.float32)}


def offline_nemo_ctc(folder):
    nodes, constants = scores("frames")
    save(folder / "model.onnx", [
        helper.make_node("AveragePool", ["audio_signal"], ["pooled"], kernel_shape=[STEP], strides=[STEP]),
        helper.make_node("Transpose", ["pooled"], ["frames"], perm=[0, 2, 1]),
        *nodes,
        helper.make_node("LogSoftmax", ["scores"], ["logprobs"], axis=-1),
    ], [
        tensor("audio_signal", TensorProto.FLOAT, ["B", MELS, "T"]), tensor("length", TensorProto.INT64, ["B"]),
    ], [
        tensor("logprobs", TensorProto.FLOAT, ["B", "steps", SIZE]),
    ], constants, {"model_type": "EncDecCTCModelBPE", "vocab_size": len(WORDS), "subsampling_factor": STEP,
                   "normalize_type": ""})
    return WORDS + ["<blk>"]


def sense_voice(folder):
    """Seven frames are one, every six; only the one in the middle is looked at."""
    window, shift = 7, 6
    tokens = ["<unk>", "\u2581lo", "\u2581hi", "\u2581mid", "<|en|>", "<|NEUTRAL|>", "<|Speech|>", "<|withitn|>"]
    weights = numpy.zeros((MELS * window, len(tokens)), numpy.float32)
    weights[MELS * 3:MELS * 4, :SIZE - 1] = band_weights()[:, :SIZE - 1]
    prompt = numpy.full((1, 4, len(tokens)), NEVER, numpy.float32)
    for step in range(4):
        prompt[0, step, 4 + step] = 0
    constants = {"weights": weights, "prompt": prompt,
                 "bias": numpy.array([SENSE_VOICE_SILENCE, 0, 0, 0] + [NEVER] * 4, numpy.float32)}
    numbers = ",".join(["0"] * MELS * window), ",".join(["1"] * MELS * window)
    save(folder / "model.onnx", [
        helper.make_node("MatMul", ["x", "weights"], ["energies"]),
        helper.make_node("Add", ["energies", "bias"], ["scores"]),
        helper.make_node("Concat", ["prompt", "scores"], ["logits"], axis=1),
    ], [
        tensor("x", TensorProto.FLOAT, [1, "T", MELS * window]), tensor("x_length", TensorProto.INT32, [1]),
        tensor("language", TensorProto.INT32, [1]), tensor("text_norm", TensorProto.INT32, [1]),
    ], [
        tensor("logits", TensorProto.FLOAT, [1, "steps", len(tokens)]),
    ], constants, {"model_type": "sense_voice_ctc", "comment": "toy", "vocab_size": len(tokens), "blank_id": 0,
                   "lfr_window_size": window, "lfr_window_shift": shift, "normalize_samples": 0, "with_itn": 14,
                   "without_itn": 15, "lang_auto": 0, "lang_zh": 3, "lang_en": 4, "lang_yue": 7, "lang_ja": 11,
                   "lang_ko": 12, "neg_mean": numbers[0], "inv_stddev": numbers[1]})
    return tokens


def loudest_word(frames, axis):
    """Scores of the words by the energy in their bands in the whole utterance, as the tensor "words"."""
    return [helper.make_node("ReduceMean", [frames], ["mean"], axes=[axis], keepdims=1),
            helper.make_node("MatMul", ["mean", "weights"], ["words"])]


def only_at(position, words, end):
    """The nodes of a decoder that writes a word if "position" is true, and ends otherwise."""
    return [helper.make_node("Cast", [position], ["is_word"], to=TensorProto.FLOAT),
            helper.make_node("Sub", ["one", "is_word"], ["is_end"]),
            helper.make_node("Mul", [words, "is_word"], ["word"]),
            helper.make_node("Mul", [end, "is_end"], ["no_word"]),
            helper.make_node("Add", ["word", "no_word"], ["scores"])]


def row(size, **values):
    """A row of scores in which all but those of "token_N" are as good as impossible."""
    result = numpy.full((1, 1, size), NEVER, numpy.float32)
    for name, value in values.items():
        result[0, 0, int(name.removeprefix("token_"))] = value
    return result


def encoded(tokens):
    return [base64.b64encode(token.encode()).decode() for token in tokens]


def whisper(folder):
    """Writes one word, the same in any language but German."""
    tokens = [" <unk>", " lo", " hi", " mid", " tief"]
    end, start, english, german, translate, transcribe, no_speech, no_times = range(5, 13)
    size = no_times + 1
    weights = numpy.zeros((MELS, size), numpy.float32)
    weights[:, :4] = band_weights()[:, :4]
    bias = row(size, token_1=0, token_2=0, token_3=0)
    save(folder / "toy-encoder.onnx", [
        helper.make_node("Transpose", ["mel"], ["frames"], perm=[0, 2, 1]),
        *loudest_word("frames", 1),
        helper.make_node("Add", ["words", "bias"], ["scored"]),
        helper.make_node("Unsqueeze", ["scored", "first"], ["n_layer_cross_k"]),
        helper.make_node("Identity", ["n_layer_cross_k"], ["n_layer_cross_v"]),
    ], [tensor("mel", TensorProto.FLOAT, [1, MELS, "T"])], [
        tensor("n_layer_cross_k", TensorProto.FLOAT, [1, 1, 1, size]),
        tensor("n_layer_cross_v", TensorProto.FLOAT, [1, 1, 1, size]),
    ], {"weights": weights, "bias": bias, "first": numpy.array([0], numpy.int64)}, {
        "model_type": "whisper-toy", "n_mels": MELS, "n_text_layer": 1, "n_text_ctx": 16, "n_text_state": 1,
        "n_vocab": size, "sot": start, "eot": end, "blank_id": 0, "translate": translate, "transcribe": transcribe,
        "is_multilingual": 1, "no_timestamps": no_times, "no_speech": no_speech,
        "sot_sequence": f"{start},{english},{transcribe}", "all_language_tokens": f"{english},{german}",
        "all_language_codes": "en,de"})
    cache = [1, 1, "context", 1]
    save(folder / "toy-decoder.onnx", [
        helper.make_node("Equal", ["offset", "zero"], ["is_first"]),
        helper.make_node("Squeeze", ["n_layer_cross_k", "zero"], ["heard"]),
        helper.make_node("Equal", ["tokens", "german"], ["german_tokens"]),
        helper.make_node("Cast", ["german_tokens"], ["german_numbers"], to=TensorProto.FLOAT),
        helper.make_node("ReduceMax", ["german_numbers"], ["is_german"], keepdims=0),
        helper.make_node("Mul", ["german_word", "is_german"], ["in_german"]),
        helper.make_node("Add", ["heard", "in_german"], ["said"]),
        *only_at("is_first", "said", "end"),
        helper.make_node("Shape", ["tokens"], ["shape"]),
        helper.make_node("Concat", ["shape", "size"], ["whole_shape"], axis=0),
        helper.make_node("Expand", ["scores", "whole_shape"], ["logits"]),
        helper.make_node("Identity", ["in_n_layer_self_k_cache"], ["out_n_layer_self_k_cache"]),
        helper.make_node("Identity", ["in_n_layer_self_v_cache"], ["out_n_layer_self_v_cache"]),
    ], [
        tensor("tokens", TensorProto.INT64, [1, "n"]),
        tensor("in_n_layer_self_k_cache", TensorProto.FLOAT, cache),
        tensor("in_n_layer_self_v_cache", TensorProto.FLOAT, cache),
        tensor("n_layer_cross_k", TensorProto.FLOAT, [1, 1, 1, size]),
        tensor("n_layer_cross_v", TensorProto.FLOAT, [1, 1, 1, size]),
        tensor("offset", TensorProto.INT64, [1]),
    ], [
        tensor("logits", TensorProto.FLOAT, [1, "n", size]),
        tensor("out_n_layer_self_k_cache", TensorProto.FLOAT, cache),
        tensor("out_n_layer_self_v_cache", TensorProto.FLOAT, cache),
    ], {"zero": numpy.array([0], numpy.int64), "one": numpy.array([1], numpy.float32),
        "german": numpy.array([german], numpy.int64), "size": numpy.array([size], numpy.int64),
        "german_word": row(size, token_4=-NEVER * 2) - NEVER, "end": row(size, **{f"token_{end}": 0})})
    return encoded(tokens)


def canary(folder):
    """Writes one word after its nine tokens of instructions."""
    marks = ["<|startofcontext|>", "<|startoftranscript|>", "<|emo:undefined|>", "<|en|>", "<|es|>", "<|de|>", "<|fr|>",
             "<|pnc|>", "<|nopnc|>", "<|noitn|>", "<|notimestamp|>", "<|nodiarize|>", "<|endoftext|>"]
    tokens = WORDS + marks
    size = len(tokens)
    end = size - 1
    weights = numpy.zeros((MELS, size), numpy.float32)
    weights[:, :4] = band_weights()[:, :4]
    save(folder / "encoder.onnx", [
        *loudest_word("x", 1),
        helper.make_node("Add", ["words", "bias"], ["scored"]),
        helper.make_node("Identity", ["scored"], ["enc_states"]),
        helper.make_node("Identity", ["length"], ["enc_lengths"]),
        helper.make_node("Identity", ["length"], ["enc_mask"]),
    ], [tensor("x", TensorProto.FLOAT, [1, "T", MELS]), tensor("length", TensorProto.INT64, [1])], [
        tensor("enc_states", TensorProto.FLOAT, [1, 1, size]), tensor("enc_lengths", TensorProto.INT64, [1]),
        tensor("enc_mask", TensorProto.INT64, [1]),
    ], {"weights": weights, "bias": row(size, token_1=0, token_2=0, token_3=0)}, {
        "model_type": "EncDecMultiTaskModel", "vocab_size": size, "normalize_type": "", "subsampling_factor": STEP,
        "feat_dim": MELS, "num_decoder_layers": 1, "decoder_hidden_size": 1})
    state = [1, "n", 1]
    save(folder / "decoder.onnx", [
        helper.make_node("Gather", ["decoder_input", "second"], ["position"], axis=1),
        helper.make_node("Equal", ["position", "last_instruction"], ["is_first"]),
        *only_at("is_first", "enc_states", "end"),
        helper.make_node("Identity", ["scores"], ["logits"]),
        helper.make_node("Identity", ["state"], ["next_state"]),
    ], [
        tensor("decoder_input", TensorProto.INT32, [1, 2]), tensor("state", TensorProto.FLOAT, state),
        tensor("enc_states", TensorProto.FLOAT, [1, 1, size]), tensor("enc_mask", TensorProto.INT64, [1]),
    ], [
        tensor("logits", TensorProto.FLOAT, [1, 1, size]), tensor("next_state", TensorProto.FLOAT, state),
    ], {"second": numpy.array([1], numpy.int64), "last_instruction": numpy.array([8], numpy.int32),
        "one": numpy.array([1], numpy.float32), "end": row(size, **{f"token_{end}": 0})})
    return tokens


def moonshine(folder):
    """Of the second generation. Writes one word, by how fast the sound itself changes."""
    steps = 100  # The library expects no more words than so many steps may hold.
    tokens = ["<unk>", "<s>", "</s>", " lo", " hi", " mid"]
    size = len(tokens)
    save(folder / "encoder_model.onnx", [
        helper.make_node("Slice", ["input_values", "one", "far", "one"], ["later"]),
        helper.make_node("Slice", ["input_values", "zero", "last", "one"], ["earlier"]),
        helper.make_node("Sub", ["later", "earlier"], ["difference"]),
        helper.make_node("Abs", ["difference"], ["change"]),
        helper.make_node("Abs", ["input_values"], ["loudness"]),
        helper.make_node("ReduceMean", ["change"], ["mean_change"], axes=[1], keepdims=1),
        helper.make_node("ReduceMean", ["loudness"], ["mean_loudness"], axes=[1], keepdims=1),
        helper.make_node("Div", ["mean_change", "mean_loudness"], ["rate"]),
        helper.make_node("Unsqueeze", ["rate", "zero"], ["rates"]),
        helper.make_node("Expand", ["rates", "shape"], ["last_hidden_state"]),
    ], [tensor("input_values", TensorProto.FLOAT, [1, "samples"])],
         [tensor("last_hidden_state", TensorProto.FLOAT, [1, steps, 1])],
         {"shape": numpy.array([1, steps, 1], numpy.int64), "zero": numpy.array([0], numpy.int64), "one": numpy.array([1], numpy.int64),
          "last": numpy.array([-1], numpy.int64), "far": numpy.array([1 << 40], numpy.int64)})
    names = [f"{part}.{what}" for part in ("decoder", "encoder") for what in ("key", "value")]
    save(folder / "decoder_model_merged.onnx", [
        helper.make_node("ReduceMean", ["encoder_hidden_states"], ["rate"], axes=[1], keepdims=1),
        helper.make_node("Sub", ["rate", "rates"], ["distance"]),
        helper.make_node("Abs", ["distance"], ["far_off"]),
        helper.make_node("Sub", ["likely", "far_off"], ["heard"]),
        helper.make_node("Not", ["use_cache_branch"], ["is_first"]),
        *only_at("is_first", "heard", "end"),
        helper.make_node("Identity", ["scores"], ["logits"]),
        *[helper.make_node("Identity", ["kept"], [f"present.0.{name}"]) for name in names],
    ], [
        tensor("input_ids", TensorProto.INT64, [1, "n"]),
        tensor("encoder_hidden_states", TensorProto.FLOAT, [1, steps, 1]),
        *[tensor(f"past_key_values.0.{name}", TensorProto.FLOAT, [1, 1, "past", 1]) for name in names],
        tensor("use_cache_branch", TensorProto.BOOL, [1]),
    ], [
        tensor("logits", TensorProto.FLOAT, [1, 1, size]),
        *[tensor(f"present.0.{name}", TensorProto.FLOAT, [1, 1, 2, 1]) for name in names],
    ], {"rates": numpy.array([[[9, 9, 9, 0.2, 1.6, 0.7]]], numpy.float32),
        "likely": row(size, token_3=0, token_4=0, token_5=0), "end": row(size, token_2=0),
        "one": numpy.array([1], numpy.float32), "kept": numpy.zeros((1, 1, 2, 1), numpy.float32)})
    return encoded(tokens)


KINDS = {"offline-nemo-ctc": offline_nemo_ctc, "sense-voice": sense_voice, "whisper": whisper, "canary": canary,
         "moonshine": moonshine}

if __name__ == "__main__":
    if len(sys.argv) != 3 or sys.argv[2] not in KINDS:
        sys.exit(__doc__)
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    tokens = KINDS[sys.argv[2]](target)
    (target / "tokens.txt").write_text("".join(f"{token} {index}\n" for index, token in enumerate(tokens)))
    (target / "talmo-model.json").write_text(f'{{"languages": ["en", "de", "jv"], "kind": "{sys.argv[2]}"}}\n')
