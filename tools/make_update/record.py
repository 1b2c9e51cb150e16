"""The record: the text of the control member, with the product, version and description."""
import os
import re

from make_update.messages import Refusal

CONTROL = "/tmp/.KVX.Content"
RECORD_LIMIT = 65_536  # bytes, as in the utility
TEXTS = "product", "version", "description"
# Escape sequences, control characters except tabs, bidirectional controls and the byte order mark.
HIDDEN = re.compile(
    "(\x1b\\[|\x9b)[0-?]*[ -/]*[@-~]|\x1b[]PX^_][^\x07\x1b\n]*(\x07|\x1b\\\\)|\x1b[ -/]*[0-~]|"
    "[\0-\x08\n-\x0c\x0e-\x1f\x7f-\x9f\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069\ufeff]")


def displayed(text):
    """Returns the text as the utility shows it."""
    return HIDDEN.sub("", text).replace("\r", " ")


def is_utf8(data):
    try:
        data.decode()
        return True
    except UnicodeDecodeError:
        return False


def new_record(texts):
    """Returns the record of the given texts. Refuses a text that the utility would not show as it is."""
    for name, text in texts.items():
        if "=" in text:
            raise Refusal(f'--{name} {text}: the utility shows only the text before the "="; remove the "="')
        if displayed(text) != text:
            raise Refusal(f"--{name} {text}: a newline or other control character is not displayed; remove it")
        if not is_utf8(os.fsencode(text)):
            raise Refusal(f"--{name} {text}: it is not UTF-8; convert it")
    record = "".join(f"{name}={texts[name]}\n" for name in TEXTS).encode()
    if not texts["product"]:
        raise Refusal("--product: it is empty; name the product")
    if len(record) > RECORD_LIMIT:
        raise Refusal(f"the record has {len(record):,} bytes, but the limit is {RECORD_LIMIT:,}; shorten the texts")
    return record


def report(record):
    """Yields what the utility shows of a record, with warnings."""
    lines = [line.removesuffix("\r").split("=") for line in record.decode(errors="replace").split("\n")]
    for name, (key, *fields) in zip(TEXTS, lines + [[""]] * len(TEXTS)):
        value = displayed(fields[0]) if fields else ""
        yield f"{name.capitalize()}: {value}"
        if not value:
            yield "Warning: the value is empty"
        if len(fields) > 1:
            yield 'Warning: the text after the second "=" is not shown'
        if key in TEXTS and key != name:
            yield f'Warning: the line "{key}" is shown as the {name}; only the order of the lines counts'
    if not is_utf8(record):
        yield "Warning: the record is not UTF-8; the utility shows a replacement character for each invalid byte"
