"""Times what Blender does with the mesh: ours, and its own formats with the least that they can be
told to write beside positions, faces and UVs."""

import time

import bpy
from vek_bridge import bridge

folder = bridge.tree().app_config(bridge.APP).find("BENCH_FOLDER")


def timed(name, operator, times=3, before=lambda: None, **options):
    """The best of several times: other programs may be at work."""
    best = None
    for _ in range(times):
        before()
        wall, processor = time.perf_counter(), time.process_time()
        assert operator(**options) == {"FINISHED"}
        took = time.perf_counter() - wall, time.process_time() - processor
        best = min(best or took, took)
    print("%s: %.3f\n%s_cpu: %.3f" % (name, best[0], name, best[1]))


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


def only_the_vase():
    drop_all_but(vase)
    select(vase)


timed("send", bpy.ops.vek.send)
timed("OBJ_export", bpy.ops.wm.obj_export, filepath=folder + "/m.obj", export_selected_objects=True,
      export_materials=False, export_normals=False)
timed("OBJ_import", bpy.ops.wm.obj_import, before=only_the_vase, filepath=folder + "/m.obj")
only_the_vase()
timed("PLY_export", bpy.ops.export_mesh.ply, times=1, filepath=folder + "/m.ply",
      use_selection=True, use_normals=False, use_colors=False)
timed("PLY_import", bpy.ops.import_mesh.ply, times=1, filepath=folder + "/m.ply")
