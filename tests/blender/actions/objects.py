"""Objects that are no meshes, or have none of their own."""

import bpy

from .common import (host_changes, moved, positions_in_file, receive, seen_positions, select, send)


def text(_case):
    curve = bpy.data.curves.new("Text", "FONT")
    curve.body, curve.extrude = "Vek", 0.1
    obj = bpy.data.objects.new("Text", curve)
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    return {"said": [send()]}


def only_instances(_case):
    """One of two objects shows nothing but a cone on each of its points, and a collection stands in
    the scene as an instance; then all but the instances are deselected."""
    said = [receive()]
    cones = bpy.data.objects["Egg 0"]
    put_cones_on(cones)
    crowd = bpy.data.objects.new("Crowd", None)
    crowd.instance_type = "COLLECTION"
    crowd.instance_collection = bpy.data.collections.new("Crowd")
    bpy.context.collection.objects.link(crowd)
    bpy.context.view_layer.update()
    select(cones, bpy.data.objects["Egg 1"], crowd)
    said.append(send())
    select(cones, crowd)
    said.append(send())
    select(crowd)
    return {"said": said + [send()]}


def put_cones_on(obj, beside_the_mesh=False):
    group = bpy.data.node_groups.new("Cones", "GeometryNodeTree")
    group.inputs.new("NodeSocketGeometry", "Geometry")
    group.outputs.new("NodeSocketGeometry", "Geometry")
    first, last = group.nodes.new("NodeGroupInput"), group.nodes.new("NodeGroupOutput")
    cone = group.nodes.new("GeometryNodeMeshCone")
    on_points = group.nodes.new("GeometryNodeInstanceOnPoints")
    group.links.new(first.outputs[0], on_points.inputs["Points"])
    group.links.new(cone.outputs[0], on_points.inputs["Instance"])
    shown = on_points
    if beside_the_mesh:
        shown = group.nodes.new("GeometryNodeJoinGeometry")
        group.links.new(first.outputs[0], shown.inputs[0])
        group.links.new(on_points.outputs[0], shown.inputs[0])
    group.links.new(shown.outputs[0], last.inputs[0])
    obj.modifiers.new("Cones", "NODES").node_group = group
    bpy.context.view_layer.update()


def mixed_with_instances(_case):
    """The object shows its own mesh, and a cone on each of its points."""
    said = [receive()]
    put_cones_on(bpy.data.objects["Egg 0"], beside_the_mesh=True)
    return {"said": said + [send()]}


def without_a_mesh(_case):
    """Two metaballs, which Blender melts into one, and a drawing."""
    for place in (0, 0.7):
        bpy.ops.object.metaball_add(type="BALL", location=(place, 0, 0))
    bpy.ops.object.gpencil_add(type="MONKEY")
    bpy.context.view_layer.update()
    drawing = bpy.context.object
    drawing.name = "Drawing"
    select(*bpy.context.scene.objects)
    return {"said": [send()]}


def edges_alone(_case):
    mesh = bpy.data.meshes.new("Wire")
    mesh.from_pydata([(0, 0, 0), (1, 0, 0), (0, 1, 0)], [(0, 1), (1, 2)], [])
    obj = bpy.data.objects.new("Wire", mesh)
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    return {"said": [send()]}


def camera(_case):
    obj = bpy.data.objects.new("Camera", bpy.data.cameras.new("Camera"))
    bpy.context.collection.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    return {"said": [send()]}


def text_elsewhere(_case):
    """The collection of the text is taken out of the view layer before it comes back."""
    curve = bpy.data.curves.new("Text", "FONT")
    curve.body, curve.extrude = "Vek", 0.1
    obj = bpy.data.objects.new("Text", curve)
    closed = bpy.data.collections.new("Closed")
    bpy.context.scene.collection.children.link(closed)
    closed.objects.link(obj)
    bpy.context.view_layer.update()
    select(obj)
    said = [send()]
    bpy.context.view_layer.layer_collection.children["Closed"].exclude = True
    bpy.context.view_layer.update()
    said.append(receive())
    return {"said": said, "types": sorted(each.type for each in closed.objects)}


def text_back(_case):
    """The text stands askew and has a material. Then it is shown again, and sent anew."""
    curve = bpy.data.curves.new("Text", "FONT")
    curve.body, curve.extrude = "Vek", 0.1
    curve.materials.append(bpy.data.materials.new("Ink"))
    obj = bpy.data.objects.new("Text", curve)
    bpy.context.collection.objects.link(obj)
    obj.location, obj.rotation_euler, obj.scale = (1, 2, 3), (0.5, 0, 1), (2, 2, -1)
    bpy.context.view_layer.update()
    select(obj)
    said = [send()]
    host_changes(change=moved((0, 0, 1)))
    said.append(receive())
    mesh = bpy.context.view_layer.objects.active
    found = {"type": mesh.type, "slots": [slot.material.name for slot in mesh.material_slots],
             "hidden": obj.hide_get() and obj.hide_render, "seen": seen_positions(mesh),
             "wanted": positions_in_file("Text"), "objects": len(bpy.data.objects)}
    host_changes(change=moved((0, 0, 1)))
    said.append(receive())
    found["again"] = len(bpy.data.objects)
    obj.hide_set(False)
    select(obj)
    said.append(send())
    return {**found, "said": said}
