"""What an artist has put onto a mesh in Blender, which files do not hold. It lies on vertices,
edges, faces or corners, and is lost where others take their places."""

import numpy as np

# Attributes that have a word of their own below, or stand for the geometry itself.
_OTHERS = {"position", "material_index", "sharp_face", "sharp_edge", "crease_edge", "crease"}
_MARKS_OF_FACES = {"use_freestyle_mark": bool}
_MARKS = {"use_seam": bool, "use_edge_sharp": bool, "use_freestyle_mark": bool,
          "crease": np.float32, "bevel_weight": np.float32}
# What Blender holds beside its attributes.
_OF_VERTICES = ("has_bevel_weight_vertex", "has_crease_vertex", "skin_vertices")


def lost(obj, mesh_has_uvs, stay):
    """Words for what the object loses with its faces, and with its vertices where they do not
    stay. `mesh_has_uvs`: whether the new faces have UVs."""
    mesh = obj.data
    words = [] if stay else on_vertices(obj)
    if is_mixed(mesh.polygons, "material_index", np.int32):
        words.append("materials of single faces")
    if is_mixed(mesh.polygons, "use_smooth", bool):
        words.append("smooth shading of single faces")
    if len(mesh.uv_layers) > (1 if mesh_has_uvs else 0):
        words.append("UV maps")
    if any(attribute.domain != "POINT" for attribute in _attributes(mesh)):
        words.append("colors and attributes")
    if ".sculpt_face_set" in mesh.attributes:
        words.append("face sets")
    if mesh.has_custom_normals:
        words.append("custom normals")
    if _is_marked(mesh.edges, _MARKS):
        words.append("marks of edges")
    if _is_marked(mesh.polygons, _MARKS_OF_FACES) or _has_face_maps(mesh):
        words.append("marks and maps of faces")
    if _has_edges_alone(mesh):
        words.append("edges without faces")
    return words


def on_vertices(obj):
    words = []
    if len(obj.vertex_groups):
        words.append("vertex groups")
    if obj.data.shape_keys:
        words.append("shape keys")
    mesh = obj.data
    if (any(attribute.domain == "POINT" for attribute in _attributes(mesh))
            or any(getattr(mesh, name, False) for name in _OF_VERTICES)):
        words.append("attributes of vertices")
    if ".sculpt_mask" in mesh.attributes or len(getattr(mesh, "vertex_paint_masks", ())):
        words.append("sculpt masks")
    return words


def _has_face_maps(mesh):
    return any((_values(layer.data, "value", np.int32) >= 0).any()
               for layer in getattr(mesh, "face_maps", ()))


def _has_edges_alone(mesh):
    has_face = np.zeros(len(mesh.edges), bool)
    has_face[_values(mesh.loops, "edge_index", np.uint32)] = True
    return not has_face.all()


def strip_faces(mesh):
    """Takes off what lies on faces, edges and corners, so that new ones do not have their like."""
    while mesh.uv_layers:
        mesh.uv_layers.remove(mesh.uv_layers[0])
    for name in [each.name for each in _attributes(mesh) if each.domain != "POINT"]:
        mesh.attributes.remove(mesh.attributes[name])


def is_mixed(faces, name, kind):
    values = _values(faces, name, kind)
    return bool(len(values)) and bool((values != values[0]).any())


def shading(mesh):
    """The material of all faces, and whether all are smooth; what is mixed is not kept."""
    materials = _values(mesh.polygons, "material_index", np.int32)
    smooth = _values(mesh.polygons, "use_smooth", bool)
    is_one = len(materials) and (materials == materials[0]).all()
    return int(materials[0]) if is_one else 0, bool(len(smooth) and smooth.all())


def shade(mesh, material, is_smooth):
    count = len(mesh.polygons)
    if material:
        mesh.polygons.foreach_set("material_index", np.full(count, material, np.int32))
    if is_smooth:
        mesh.polygons.foreach_set("use_smooth", np.ones(count, bool))


def _attributes(mesh):
    return [each for each in mesh.attributes
            if not each.is_internal and each.name not in _OTHERS and not _is_uv_map(each)]


def _is_uv_map(attribute):
    return attribute.data_type == "FLOAT2" and attribute.domain == "CORNER"


def _values(items, name, kind):
    values = np.zeros(len(items), kind)
    items.foreach_get(name, values)
    return values


def _is_marked(items, names):
    return any(_has_one(items, name, kind) for name, kind in names.items())


def _has_one(items, name, kind):
    try:
        return bool(_values(items, name, kind).any())
    except (AttributeError, TypeError):
        return False  # some are attributes in later Blenders
