#!/usr/bin/env python3
"""Writes the library of material assets beside it: materials.gltf, its pictures, and the table that puts them on the
flywheel. Needs nothing but Python."""

import json
import os
import random
import struct
import zlib

FOLDER = os.path.dirname(os.path.realpath(__file__))
SIDE = 128


def write_png(name, pixels):
    """Writes SIDE x SIDE pixels, each a triple from 0 to 255."""

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = b"".join(b"\0" + bytes(value for pixel in row for value in pixel) for row in pixels)
    header = struct.pack(">IIBBBBB", SIDE, SIDE, 8, 2, 0, 0, 0)
    with open(os.path.join(FOLDER, name), "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def brushed():
    """Scratches along u: roughness in green, metalness in blue."""
    numbers = random.Random(7)
    rows = []
    for _ in range(SIDE):
        rough = numbers.randint(70, 130)
        rows.append([(0, rough, 255)] * SIDE)
    return rows


def grained():
    """Small dents, as a normal map."""
    numbers = random.Random(11)
    height = [[numbers.random() for _ in range(SIDE)] for _ in range(SIDE)]
    rows = []
    for y in range(SIDE):
        row = []
        for x in range(SIDE):
            slope_x = height[y][(x + 1) % SIDE] - height[y][x]
            slope_y = height[(y + 1) % SIDE][x] - height[y][x]
            row.append((int(127.5 - 40 * slope_x), int(127.5 + 40 * slope_y), 245))
        rows.append(row)
    return rows


def material(name, uuid, base, metalness, roughness, more=None):
    surface = {"baseColorFactor": base, "metallicFactor": metalness, "roughnessFactor": roughness}
    return {"name": name, "pbrMetallicRoughness": surface, "doubleSided": True, "extras": {"uuid": uuid}, **(more or {})}


def scaled(index, times):
    """A texture that stands so often on each metre."""
    return {"index": index, "extensions": {"KHR_texture_transform": {"scale": [times, times]}}}


def library():
    steel = material("brushed steel", "5a0a4c5e-0001", [0.56, 0.57, 0.58, 1], 1, 1)
    steel["pbrMetallicRoughness"]["metallicRoughnessTexture"] = scaled(0, 20)
    rubber = material("rubber", "5a0a4c5e-0005", [0.02, 0.02, 0.02, 1], 0, 0.8)
    rubber["normalTexture"] = scaled(1, 40)
    glass = {"alphaMode": "BLEND", "extensions": {"KHR_materials_ior": {"ior": 1.5}}}
    paint = {"extensions": {"KHR_materials_clearcoat": {"clearcoatFactor": 1, "clearcoatRoughnessFactor": 0.05}}}
    return {
        "asset": {"version": "2.0"},
        "extensionsUsed": ["KHR_materials_clearcoat", "KHR_materials_ior", "KHR_texture_transform"],
        "images": [{"uri": "brushed.png"}, {"uri": "grained.png"}],
        "textures": [{"source": 0}, {"source": 1}],
        "materials": [
            steel,
            material("brass", "5a0a4c5e-0002", [0.89, 0.65, 0.25, 1], 1, 0.25),
            material("red paint", "5a0a4c5e-0003", [0.55, 0.02, 0.02, 1], 0, 0.45, paint),
            material("glass", "5a0a4c5e-0004", [0.75, 0.9, 0.95, 0.15], 0, 0.02, glass),
            rubber,
        ],
    }


def table():
    return {
        "rows": [
            {"part": "shaft", "asset": "brushed steel"},
            {"part": "bolt*", "asset": "brushed steel"},
            {"part": "washer", "asset": "brass"},
            {"part": "cover", "asset": "glass"},
            {"part": "base plate", "asset": "rubber"},
            {"color": "#c72921", "asset": "red paint"},
            {"color": "#f5c41a", "asset": "brass"},
        ]
    }


def write_json(name, content):
    with open(os.path.join(FOLDER, name), "w", encoding="utf-8") as file:
        json.dump(content, file, indent=2)
        file.write("\n")


def main():
    write_png("brushed.png", brushed())
    write_png("grained.png", grained())
    write_json("materials.gltf", library())
    write_json("materials.json", table())


if __name__ == "__main__":
    main()
