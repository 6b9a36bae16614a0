#!/usr/bin/env python3
"""Makes the small archives beside this script, byte for byte the same every time.

They are what ordinary programs never write: hostile names, claims that are not true, records that
contradict each other, old encryption. Each name says what is special. Run it without arguments.
"""
import pathlib
import struct
import zlib

HERE = pathlib.Path(__file__).resolve().parent
DATE, TIME = 0x2C21, 0x6000  # 2002-01-01 12:00
STORED, DEFLATED = 0, 8


def deflate(data):
    packer = zlib.compressobj(6, zlib.DEFLATED, -15)
    return packer.compress(data) + packer.flush()


class Entry:
    """One entry; every field can be told a lie."""

    def __init__(self, name, data=b"", method=STORED, **lies):
        self.name = name if isinstance(name, bytes) else name.encode("utf-8")
        packed = deflate(data) if method == DEFLATED else data
        self.method, self.packed = method, lies.get("packed", packed)
        self.size = lies.get("size", len(data))
        self.packed_size = lies.get("packed_size", len(self.packed))
        self.crc = lies.get("crc", zlib.crc32(data))
        self.flags = lies.get("flags", 0 if isinstance(name, bytes) else 0x800)
        self.host = lies.get("host", 3)
        self.attributes = lies.get("attributes", 0)
        self.extra = lies.get("extra", b"")
        self.gap = lies.get("gap", 0)
        self.offset = lies.get("offset")

    def local(self):
        return struct.pack("<4s5H3I2H", b"PK\3\4", 20, self.flags, self.method, TIME, DATE, self.crc,
                           self.packed_size, self.size, len(self.name), 0) + self.name + self.packed

    def central(self, offset):
        return struct.pack("<4s6H3I5H2I", b"PK\1\2", 20 | self.host << 8, 20, self.flags, self.method,
                           TIME, DATE, self.crc, self.packed_size, self.size, len(self.name),
                           len(self.extra), 0, 0, 0, self.attributes, offset) + self.name + self.extra


def archive(*entries, comment=b"", count=None, prefix=b"", suffix=b""):
    body, directory = bytearray(prefix), bytearray()
    for entry in entries:
        body += bytes(entry.gap)
        offset = len(body) if entry.offset is None else entry.offset
        body += entry.local()
        directory += entry.central(offset)
    number = len(entries) if count is None else count
    end = struct.pack("<4s4H2IH", b"PK\5\6", 0, 0, number, number, len(directory), len(body),
                      len(comment))
    return bytes(body + directory) + end + comment + suffix


def zip64(*entries, claimed=None):
    plain = archive(*entries)
    body, end = plain[:-22], struct.unpack("<4s4H2IH", plain[-22:])
    number = len(entries) if claimed is None else claimed
    record = struct.pack("<4sQ2H2I4Q", b"PK\6\6", 44, 45, 45, 0, 0, number, number, end[5], end[6])
    locator = struct.pack("<4sIQI", b"PK\6\7", 0, len(body), 1)
    return body + record + locator + struct.pack("<4s4H2IH", b"PK\5\6", 0, 0, 0xFFFF, 0xFFFF,
                                                 0xFFFFFFFF, 0xFFFFFFFF, 0)


def traditionally_encrypted(data, password):
    """PKWARE's older encryption, with its 12-byte header."""
    def step(crc, byte):
        crc ^= byte
        for _ in range(8):
            crc = (crc >> 1) ^ (0xEDB88320 if crc & 1 else 0)
        return crc

    keys = [0x12345678, 0x23456789, 0x34567890]

    def update(byte):
        keys[0] = step(keys[0], byte)
        keys[1] = ((keys[1] + (keys[0] & 0xFF)) * 134775813 + 1) & 0xFFFFFFFF
        keys[2] = step(keys[2], keys[1] >> 24)

    for byte in password:
        update(byte)
    packed = bytearray()
    for byte in bytes(range(11)) + bytes([zlib.crc32(data) >> 24]) + data:
        key = (keys[2] | 2) & 0xFFFF
        packed.append(byte ^ ((key * (key ^ 1)) >> 8 & 0xFF))
        update(byte)
    return bytes(packed)


TEXT = b"Loam, silt and clay. " * 20
SECRET = b"pore pressure 12.5 kPa"
LINK = 0o120777 << 16

FILES = {
    # Readable.
    "plain": archive(Entry("a.txt", TEXT, DEFLATED), Entry("dir/b.txt", b"b"), Entry("dir/")),
    "empty": archive(),
    "empty_with_comment": archive(comment=b"8.1"),
    "host_10": archive(Entry(b"a.txt", b"a", host=10), Entry(b"b.txt", b"b", host=3)),
    "host_10_second": archive(Entry(b"a.txt", b"a", host=0), Entry(b"b.txt", b"b", host=10)),
    "comment_8_1": archive(Entry("a.txt", b"a"), comment=b"8.1"),
    "comment_holds_an_end_record": archive(
        Entry("a.txt", b"a"), comment=b"x" + archive() + b"trailing text of the comment"),
    "comment_code_page_437": archive(Entry("a.txt", b"a"), comment=b"B\x94schung"),
    "zip64_end_record": zip64(Entry("a.txt", TEXT, DEFLATED), Entry("b.txt", b"b")),
    "name_code_page_437": archive(Entry(b"B\x94schung.txt", b"a")),
    "name_utf8_without_flag": archive(Entry("Böschung.txt".encode(), b"a")),
    "names_with_backslashes": archive(Entry(b"dir\\a.txt", b"a"), Entry(b"dir\\sub\\", b"")),
    "two_of_one_name": archive(Entry("a.txt", b"first"), Entry("a.txt", b"second")),
    "gaps": archive(Entry("a.txt", TEXT, gap=100), Entry("b.txt", b"b", gap=5000)),
    "program_in_front": archive(Entry("a.txt", b"a"), prefix=b"#!/bin/sh\nexit 0\n"),
    "bytes_behind": archive(Entry("a.txt", b"a"), suffix=b"left over"),
    "traditional_password_sesame": archive(
        Entry("secret.txt", SECRET, flags=0x801,
              packed=traditionally_encrypted(SECRET, b"sesame"))),
    # Names that must not be written.
    "name_dotdot": archive(Entry("../escaped.txt", b"x")),
    "name_dotdot_backslash": archive(Entry(b"..\\escaped.txt", b"x")),
    "name_dotdot_inside": archive(Entry("dir/../../escaped.txt", b"x")),
    "name_absolute": archive(Entry("/tmp/escaped.txt", b"x")),
    "name_drive": archive(Entry(b"C:\\escaped.txt", b"x")),
    "name_unc": archive(Entry(b"\\\\host\\share\\escaped.txt", b"x")),
    "name_colon": archive(Entry("a.txt:stream", b"x")),
    "name_empty": archive(Entry("", b"x")),
    "name_device": archive(Entry("dir/aux.txt", b"x")),
    "name_dots_and_blanks": archive(Entry(".. /escaped.txt", b"x")),
    # Links.
    "link_then_file_below": archive(Entry("out", b"..", attributes=LINK),
                                    Entry("out/escaped.txt", b"x")),
    # Damage.
    "bad_sum_stored": archive(Entry("a.txt", TEXT, crc=1)),
    "bad_sum_deflated": archive(Entry("a.txt", TEXT, DEFLATED, crc=1)),
    "bad_deflate": archive(Entry("a.txt", TEXT, DEFLATED, packed=b"\xff" * 30)),
    "claims_4_gigabytes": archive(Entry("a.txt", TEXT, DEFLATED, size=0xFFFFFFFE)),
    "claims_less": archive(Entry("a.txt", TEXT, DEFLATED, size=10)),
    "claims_content_of_nothing": archive(Entry("a.txt", b"", size=100, crc=7)),
    "bomb_10_megabytes": archive(Entry("a.txt", bytes(10_000_000), DEFLATED, size=100)),
    "count_too_large": archive(Entry("a.txt", b"a"), count=2),
    "count_too_small": archive(Entry("a.txt", b"a"), Entry("b.txt", b"b"), count=1),
    "zip64_claims_many_entries": zip64(Entry("a.txt", b"a"), claimed=1 << 40),
    "offset_outside": archive(Entry("a.txt", b"a", offset=0x7FFFFFFF)),
    "extra_field_overruns": archive(Entry("a.txt", b"a", extra=b"\1\2\xff\xff")),
    "method_unknown": archive(Entry("a.txt", TEXT, 77)),
    "flag_utf8_and_bytes_that_are_not": archive(Entry(b"\xff\xfe.txt", b"a", flags=0x800)),
}

if __name__ == "__main__":
    for old in HERE.glob("*.zip"):
        old.unlink()
    for name, content in FILES.items():
        (HERE / f"{name}.zip").write_bytes(content)
