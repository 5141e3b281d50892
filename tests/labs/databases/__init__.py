"""Databases with the hardware_vtep schema: their rows and their servers."""

import json
import os

DATABASE = "hardware_vtep"
SCHEMA = os.environ.get("VTEP_SCHEMA", "/usr/share/openvswitch/vtep.ovsschema")


class LabError(Exception):
    """A failure, described in one line."""


def compact(value):
    return json.dumps(value, separators=(",", ":"))
