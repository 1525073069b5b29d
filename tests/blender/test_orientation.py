"""Blender gets meshes upright and the right way out, and so does the host."""

import numpy as np
import pytest

import cases
import meshes
from host import describe


def test_what_is_up_for_the_host_is_up_in_blender(results):
    shown = results("kinds").scene["Mixed"]
    low, high = cases.EGG[0].min(axis=0), cases.EGG[0].max(axis=0)
    assert shown["low"] == pytest.approx([low[0], -high[2], low[1]])
    assert shown["high"] == pytest.approx([high[0], -low[2], high[1]])


def test_every_face_is_outside_again_whatever_the_switches(results, bridge):
    """All 16 ways there with all 16 ways back, where Blender turns the objects accordingly."""
    vertices, faces = cases.EGG
    result = results("switches")
    assert result.said == ["256 objects received.", "256 objects sent; import them in Dorvia."]
    wrong = []
    for back in cases.SWITCHES:
        describe(bridge, cases.descriptor("IMPORT", back))
        for there in cases.SWITCHES:
            line = result.host.line(cases.turned_name(there, back))
            assert bridge.call("VekPreImport", line + ".vek") == 0
            mesh = meshes.Back(result.host.bytes_of(line))
            good = (mesh.vertices.shape == vertices.shape
                    and np.allclose(mesh.vertices, vertices, atol=1e-5)
                    and len(mesh.faces) == len(faces)
                    and meshes.open_edges(mesh.faces) == 0
                    and meshes.inward_faces(mesh.vertices, mesh.faces) == 0)
            if not good:
                wrong.append((there, back))
    assert not wrong
