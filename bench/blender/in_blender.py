"""Times what Blender does with the mesh: ours, and its own formats with the least that they can be told
to write beside positions, faces and UVs."""

import time

import bpy
from vek_bridge import bridge

folder = bridge.tree().app_config(bridge.APP).find("BENCH_FOLDER")


def timed(name, operator, **options):
    started = time.perf_counter()
    assert operator(**options) == {"FINISHED"}
    print(f"{name}: {time.perf_counter() - started:.3f}")


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


drop_all_but(None)
timed("receive", bpy.ops.vek.receive)
vase = bpy.context.view_layer.objects.active
timed("send", bpy.ops.vek.send)
timed("OBJ_export", bpy.ops.wm.obj_export, filepath=folder + "/m.obj", export_selected_objects=True,
      export_materials=False, export_normals=False)
timed("OBJ_import", bpy.ops.wm.obj_import, filepath=folder + "/m.obj")
drop_all_but(vase)
select(vase)
timed("PLY_export", bpy.ops.export_mesh.ply, filepath=folder + "/m.ply", use_selection=True,
      use_normals=False, use_colors=False)
timed("PLY_import", bpy.ops.import_mesh.ply, filepath=folder + "/m.ply")
