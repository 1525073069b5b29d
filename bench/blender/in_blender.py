"""Times what Blender does with the mesh: ours, and each of its own formats with the least that it
can be told to write beside positions, faces and UVs."""

import time

import bpy
from vek_bridge import bridge

folder = bridge.tree().app_config(bridge.APP).find("BENCH_FOLDER")
ENOUGH = 10.0  # seconds; what takes longer is measured once

# The operators of each format, the first that this Blender has of each pair of braces.
FORMATS = (
    ("OBJ", "obj", {"wm.obj_export": {"export_selected_objects": True, "export_materials": False,
                                      "export_normals": False}},
     {"wm.obj_import": {}}),
    ("STL", "stl", {"wm.stl_export": {"export_selected_objects": True},
                    "export_mesh.stl": {"use_selection": True}},
     {"wm.stl_import": {}, "import_mesh.stl": {}}),
    ("Alembic", "abc", {"wm.alembic_export": {"selected": True, "as_background_job": False}},
     {"wm.alembic_import": {"as_background_job": False}}),
    ("USD", "usdc", {"wm.usd_export": {"selected_objects_only": True, "export_materials": False,
                                       "export_normals": False}},
     {"wm.usd_import": {}}),
    ("PLY", "ply", {"wm.ply_export": {"export_selected_objects": True},
                    "export_mesh.ply": {"use_selection": True, "use_normals": False,
                                        "use_colors": False}},
     {"wm.ply_import": {}, "import_mesh.ply": {}}),
    ("glTF", "glb", {"export_scene.gltf": {"use_selection": True, "export_format": "GLB",
                                           "export_materials": "NONE", "export_normals": False,
                                           "export_animations": False}},
     {"import_scene.gltf": {"import_shading": "FLAT"}}),  # other shading wants an older numpy
    ("FBX", "fbx", {"export_scene.fbx": {"use_selection": True, "bake_anim": False}},
     {"import_scene.fbx": {"use_anim": False, "use_custom_normals": False}}),
    ("Collada", "dae", {"wm.collada_export": {"selected": True}}, {"wm.collada_import": {}}),
)


def timed(name, action, before=lambda: None, times=3):
    """The best of several times: other programs may be at work."""
    best = None
    for _ in range(times):
        before()
        wall, processor = time.perf_counter(), time.process_time()
        result = action()
        took = time.perf_counter() - wall, time.process_time() - processor
        assert result in (None, {"FINISHED"}), (name, result)
        best = min(best or took, took)
        if took[0] > ENOUGH:
            break
    print("%s: %.3f\n%s_cpu: %.3f" % (name, best[0], name, best[1]), flush=True)


def operator(choice, path):
    """Calls an operator of those; None where this Blender has none of them."""
    for name, options in choice.items():
        module, _, function = name.partition(".")
        if function in dir(getattr(bpy.ops, module)):
            return lambda: getattr(getattr(bpy.ops, module), function)(filepath=path, **options)
    return None


def select(obj):
    for other in bpy.context.view_layer.objects:
        other.select_set(other == obj)
    bpy.context.view_layer.objects.active = obj


def drop_all_but(kept):
    for obj in list(bpy.data.objects):
        if obj != kept:
            data = obj.data
            bpy.data.objects.remove(obj)
            if isinstance(data, bpy.types.Mesh):
                bpy.data.meshes.remove(data)


timed("receive", bpy.ops.vek.receive, before=lambda: drop_all_but(None))
vase = bpy.context.view_layer.objects.active
FACES = len(vase.data.polygons)


def only_the_vase():
    drop_all_but(vase)
    select(vase)


def check_what_came(name):
    """Some formats have triangles alone."""
    assert any(len(mesh.polygons) >= FACES for mesh in bpy.data.meshes if mesh != vase.data), name


timed("send", bpy.ops.vek.send)
for name, extension, exporters, importers in FORMATS:
    path = folder + "/m." + extension
    out_of, into = operator(exporters, path), operator(importers, path)
    if not out_of or not into:
        continue
    only_the_vase()
    timed(name + "_export", out_of)
    timed(name + "_import", into, before=only_the_vase)
    check_what_came(name)


def append():
    with bpy.data.libraries.load(folder + "/m.blend") as (_, wanted):
        wanted.meshes = [vase.data.name]


# Memory as it stands, which no other program reads.
only_the_vase()
timed("own_export", lambda: bpy.data.libraries.write(folder + "/m.blend", {vase.data},
                                                     fake_user=True))
timed("own_import", append, before=only_the_vase)
