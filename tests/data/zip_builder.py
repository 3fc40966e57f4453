"""A ZIP writer that can lie: every field of every record can be set apart from what is true."""

import struct
import zlib

LOCAL, CENTRAL, END = 0x04034B50, 0x02014B50, 0x06054B50
END64, LOCATOR64, DESCRIPTOR = 0x06064B50, 0x07064B50, 0x08074B50
DATE_1980 = 0x0021


class Entry:
    """One entry; `lies` replaces fields of both headers, `local` and `central` those of one. `trailer` stands behind its bytes."""

    def __init__(self, name, data=b"", method=8, flags=0, local=None, central=None, lies=None, local_extra=b"",
                 central_extra=b"", comment=b"", descriptor=False, external=0, made_by=20, packed=None, trailer=b""):
        self.name = name.encode() if isinstance(name, str) else name
        self.data = data.encode() if isinstance(data, str) else data
        self.method = method
        self.flags = flags | (8 if descriptor else 0)
        if not self.name.isascii() and not flags:  # any flag keeps the name from being marked as UTF-8
            self.flags |= 0x800
        self.local, self.central = dict(lies or {}, **(local or {})), dict(lies or {}, **(central or {}))
        self.local_extra, self.central_extra, self.comment = local_extra, central_extra, comment
        self.descriptor, self.external, self.made_by, self.trailer = descriptor, external, made_by, trailer
        self.packed = packed if packed is not None else self._pack()

    def _pack(self):
        if self.method != 8:
            return self.data
        packer = zlib.compressobj(6, zlib.DEFLATED, -15)
        return packer.compress(self.data) + packer.flush()

    def fields(self, lies, hidden=False):
        true = {"version": 20, "flags": self.flags, "method": self.method, "time": 0, "date": DATE_1980,
                "crc": zlib.crc32(self.data), "packed": len(self.packed), "size": len(self.data), "name": self.name}
        if hidden:
            true.update(crc=0, packed=0, size=0)
        return dict(true, **lies)

    def local_record(self):
        f = self.fields(self.local, self.descriptor)
        head = struct.pack("<IHHHHHIIIHH", f.get("signature", LOCAL), f["version"], f["flags"], f["method"], f["time"], f["date"],
                           f["crc"], f["packed"], f["size"], f.get("name_length", len(f["name"])),
                           f.get("extra_length", len(self.local_extra)))
        record = head + f["name"] + self.local_extra + self.packed
        if self.descriptor:
            d = dict({"crc": zlib.crc32(self.data), "packed": len(self.packed), "size": len(self.data)},
                     **self.local.get("descriptor", {}))
            record += struct.pack("<IIII", DESCRIPTOR, d["crc"], d["packed"], d["size"])
        return record + self.trailer

    def truth(self):
        """Checksum, compressed size and size, as they really are."""
        return zlib.crc32(self.data), len(self.packed), len(self.data)

    def central_record(self, offset):
        f = self.fields(self.central)
        return struct.pack("<IHHHHHHIIIHHHHHII", f.get("signature", CENTRAL), self.made_by, f["version"], f["flags"], f["method"],
                           f["time"], f["date"], f["crc"], f["packed"], f["size"], f.get("name_length", len(f["name"])),
                           len(self.central_extra), len(self.comment), f.get("disk", 0), 0, self.external,
                           f.get("offset", offset)) + f["name"] + self.central_extra + self.comment


def archive(entries, prefix=b"", suffix=b"", comment=b"", end=None, gap=b"", shift_offsets=False, zip64=None,
            directory_order=None):
    """The bytes of an archive. `end` replaces fields of the end record; `zip64` (a dict of lies) adds the ZIP64 end records."""
    body, records = prefix, []
    for entry in entries:
        offset = len(body) - (len(prefix) if shift_offsets else 0)
        body += entry.local_record()
        records.append(entry.central_record(offset))
    directory, count = b"".join(records[n] for n in directory_order or range(len(records))), len(records)
    body += gap
    start = len(body) - (len(prefix) if shift_offsets else 0)
    e = dict({"disk": 0, "start_disk": 0, "here": count, "count": count, "size": len(directory), "offset": start,
              "comment_length": len(comment), "signature": END}, **(end or {}))
    tail = b""
    if zip64 is not None:
        z = dict({"count": count, "size": len(directory), "offset": start, "record_size": 44, "disks": 1, "version": 45,
                  "locator": start + len(directory)}, **zip64)
        tail += struct.pack("<IQHHIIQQQQ", END64, z["record_size"], 45, z["version"], 0, 0, z["count"], z["count"], z["size"], z["offset"])
        tail += struct.pack("<IIQI", LOCATOR64, 0, z["locator"], z["disks"])
    tail += struct.pack("<IHHHHIIH", e["signature"], e["disk"], e["start_disk"], e["here"], e["count"], e["size"], e["offset"],
                        e["comment_length"]) + comment
    return body + directory + tail + suffix


def extra(identifier, payload):
    return struct.pack("<HH", identifier, len(payload)) + payload
