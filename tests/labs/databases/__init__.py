"""Databases with the hardware_vtep schema: their rows, and servers that hold them."""

import json
import os

DATABASE = "hardware_vtep"
SCHEMA = os.environ.get("VTEP_SCHEMA", "/usr/share/openvswitch/vtep.ovsschema")


class LabError(Exception):
    """What went wrong, in one line."""


def compact(value):
    return json.dumps(value, separators=(",", ":"))
