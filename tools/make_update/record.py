"""The record: the text of the control member, with the product, version and description."""
import os
import re

from make_update.messages import Refusal

CONTROL = "/tmp/.KVX.Content"
RECORD_LIMIT = 65_536  # bytes, as in the utility
TEXTS = "product", "version", "description"


def displayed(text):
    """Removes the control characters. The utility does not show them either, except tabs."""
    return re.sub(r"[\0-\x08\n-\x1f\x7f-\x9f]", "", text)


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
    lines = [line.split("=") for line in record.decode(errors="replace").split("\n")]
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
