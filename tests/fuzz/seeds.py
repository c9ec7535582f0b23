"""Writes archives to begin with, one for each form that the reader knows, into a folder."""
import io
import pathlib
import sys
import zipfile
from unittest import mock

CONTENTS = {"a.txt": b"text", "folder/": b"", "folder/b.dat": b"0123456789" * 40, "房屋.txt": b""}


class GbkName(zipfile.ZipInfo):
    def _encodeFilenameFlags(self):
        return self.filename.encode("gbk"), self.flag_bits


class Unseekable(io.BytesIO):
    """Whoever cannot go back writes sizes and checksum behind the content."""

    def seekable(self):
        return False

    def seek(self, *_):
        raise io.UnsupportedOperation

    tell = seek


def archive(contents=CONTENTS, method=zipfile.ZIP_DEFLATED, kind=zipfile.ZipInfo, to=io.BytesIO,
            mode=0, extra=b"", comment=b"", flags=0, is64=False):
    stream = to()
    with zipfile.ZipFile(stream, "w") as made:
        made.comment = comment
        for name, content in contents.items():
            info = kind(name, (2020, 2, 29, 12, 34, 56))
            info.compress_type = method
            info.external_attr = mode << 16
            info.extra = extra
            with made.open(info, "w", force_zip64=is64) as entry:
                entry.write(content)
            info.flag_bits |= flags  # in the directory, which is written last
    return stream.getvalue()


def archive64():
    with mock.patch.multiple(zipfile, ZIP64_LIMIT=1, ZIP_FILECOUNT_LIMIT=1):
        return archive(is64=True)


SEEDS = {
    "deflated": archive(),
    "stored": archive(method=zipfile.ZIP_STORED),
    "descriptors": archive(to=Unseekable),
    "form64": archive64(),
    "gbk": archive({"房屋.txt": b"x", "图/乗": b"y"}, kind=GbkName),
    "encrypted": archive({"a": b"x"}, flags=1),
    "link": archive({"a": b"/etc"}, mode=0o120777),
    "time": archive({"a": b"x"}, extra=b"UT\5\0\1\0\xd2\2\x96"),
    "comment": archive({"a": b"x"}, comment=b"PK\5\6 and more"),
    "other-method": archive({"a": b"x"}, method=zipfile.ZIP_BZIP2),
    "large": archive({"zeros": bytes(1200000)}),
    "behind-a-program": b"#!/bin/sh\n" + archive({"a": b"x"}),
    "no-entries": archive({}),
    "nothing": b"",
}

# One name each: the first that is refused ends an extraction.
NAMES = ["../a", "/b", "c\\d", "C:e", "NUL.txt", "a/" * 201, "folder/f", "kept", "kept/g", "link", "link/h"]
SEEDS.update({f"name-{i}": archive({name: b""}) for i, name in enumerate(NAMES)})
SEEDS.update({f"conflict-{i}": archive({name: b"x" for name in names})
              for i, names in enumerate([("a", "A"), ("a", "a/b"), ("a/b", "a"), ("a/b", "a/c")])})

folder = pathlib.Path(sys.argv[1])
for name, seed in SEEDS.items():
    (folder / name).write_bytes(seed)
