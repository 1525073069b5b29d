"""Takes the picture of the demo: the objects in the host, in Blender with their modifiers, and back
in the host. Each is a scene of its own with a camera that has that side's axis upwards; no mesh is
turned for the picture.

    blender -b SCENE.blend --addons vek_bridge --python blender_picture.py -- FOLDER
"""

import glob
import os
import re
import sys

import bpy
import numpy as np
from mathutils import Matrix, Vector
from vek_bridge import mesh_in

WIDTH, HEIGHT = 480, 400  # of each of the three
SAMPLES = 24
COLOURS = {"x": (0.9, 0.1, 0.1, 1), "y": (0.1, 0.6, 0.1, 1), "z": (0.1, 0.2, 0.9, 1)}
# Where the viewer stands, and what is up: the same view in the axes of each side.
HOST = {"from": Vector((0.28, 0.5, 1)), "up": Vector((0, 1, 0)), "up_name": "y"}
BLENDER = {"from": Vector((0.28, -1, 0.5)), "up": Vector((0, 0, 1)), "up_name": "z"}


def colour(name, rgba, glows=False):
    material = bpy.data.materials.get(name) or bpy.data.materials.new(name)
    material.use_nodes = True
    nodes = material.node_tree.nodes
    nodes.clear()
    shader = nodes.new("ShaderNodeEmission" if glows else "ShaderNodeBsdfDiffuse")
    shader.inputs["Color"].default_value = rgba
    output = nodes.new("ShaderNodeOutputMaterial")
    material.node_tree.links.new(shader.outputs[0], output.inputs["Surface"])
    return material


def number_in(path):
    return int(re.search(r"(\d+)\.vek$", path).group(1))


def scene_of_files(name, folder):
    scene = bpy.data.scenes.new(name)
    for path in sorted(glob.glob(os.path.join(glob.escape(folder), "*.vek")), key=number_in):
        given = mesh_in.Given(path)
        mesh = mesh_in.new_mesh(name, given.vertices, given.faces, given.uvs)
        scene.collection.objects.link(bpy.data.objects.new(name, mesh))
    return scene


def meshes(scene):
    return [obj for obj in scene.objects if obj.type == "MESH"]


def box(scene):
    """The corners of the box around all meshes as they look, in world coordinates."""
    with bpy.context.temp_override(scene=scene, view_layer=scene.view_layers[0]):
        depsgraph = bpy.context.evaluated_depsgraph_get()
    points = []
    for obj in meshes(scene):
        seen = obj.evaluated_get(depsgraph)
        points += [obj.matrix_world @ Vector(corner) for corner in seen.bound_box]
    points = np.array(points)
    return Vector(points.min(axis=0)), Vector(points.max(axis=0))


def turn(side):
    """The rotation of something that faces the viewer, upright."""
    z = side["from"].normalized()
    x = side["up"].cross(z).normalized()
    return Matrix((x, z.cross(x), z)).transposed()


def link(scene, data, material, matrix):
    obj = bpy.data.objects.new(data.name, data)
    if material:
        data.materials.append(material)
    obj.matrix_world = matrix
    scene.collection.objects.link(obj)
    return obj


def words(scene, text, side, place, size, material, align):
    curve = bpy.data.curves.new(text, "FONT")
    curve.body, curve.size, curve.align_x = text, size, align
    link(scene, curve, material, Matrix.Translation(place) @ turn(side).to_4x4())


def arrows(scene, side, origin, length):
    for axis, rgba in COLOURS.items():
        along = Vector([float(axis == name) for name in "xyz"]) * length
        curve = bpy.data.curves.new(axis, "CURVE")
        curve.dimensions, curve.bevel_depth = "3D", 0.035 * length
        line = curve.splines.new("POLY")
        line.points.add(1)
        line.points[1].co = (*along, 1)
        material = colour("axis " + axis, rgba, glows=True)
        link(scene, curve, material, Matrix.Translation(origin))
        words(scene, axis, side, origin + 1.12 * along, 0.45 * length, material, "CENTER")


def set_up(scene, side, title, size):
    """`size` is the length that fills the width of the picture, the same for all three."""
    low, high = box(scene)
    middle = (low + high) / 2
    rotation = turn(side)
    camera = bpy.data.cameras.new("Camera")
    camera.type, camera.ortho_scale, camera.clip_end = "ORTHO", size, 100 * size
    place = middle + side["from"].normalized() * 10 * size
    scene.camera = link(scene, camera, None, Matrix.Translation(place) @ rotation.to_4x4())
    sun = bpy.data.lights.new("Sun", "SUN")
    sun.energy, sun.angle = 2.2, 0.1
    lamp = rotation @ Vector((-0.5, 0.7, 1))
    link(scene, sun, None, lamp.to_track_quat("Z", "Y").to_matrix().to_4x4())

    def at(right, up):
        return middle + rotation @ Vector((right * size, up * size, 2 * size))

    arrows(scene, side, at(-0.42, -0.34), 0.07 * size)
    black = colour("words", (0.01, 0.01, 0.01, 1), glows=True)
    words(scene, title, side, at(0, 0.35), 0.045 * size, black, "CENTER")
    clay = [colour("clay %d" % i, rgba) for i, rgba in
            enumerate(((0.72, 0.38, 0.22, 1), (0.30, 0.48, 0.62, 1), (0.50, 0.58, 0.30, 1)))]
    for number, obj in enumerate(meshes(scene)):
        obj.data.materials.clear()
        obj.data.materials.append(clay[number % 3])


def render(scene, path):
    world = scene.world = bpy.data.worlds.new("Sky")
    world.use_nodes = True
    background = world.node_tree.nodes["Background"]
    background.inputs["Color"].default_value = (0.85, 0.87, 0.9, 1)
    background.inputs["Strength"].default_value = 0.6
    scene.render.engine = "CYCLES"
    scene.cycles.samples = SAMPLES
    scene.cycles.use_denoising = False
    scene.view_settings.view_transform = "Standard"
    scene.render.resolution_x, scene.render.resolution_y = WIDTH, HEIGHT
    scene.render.resolution_percentage = 100
    scene.render.filepath = path
    bpy.ops.render.render(write_still=True, scene=scene.name)
    image = bpy.data.images.load(path)
    pixels = np.empty(4 * WIDTH * HEIGHT, np.float32)
    image.pixels.foreach_get(pixels)
    os.remove(path)
    return pixels.reshape(HEIGHT, WIDTH, 4)


def take(folder):
    in_blender = bpy.context.scene
    views = (
        (scene_of_files("Host", folder + "/host"), HOST, "host: y up"),
        (in_blender, BLENDER, "Blender: z up, with modifiers"),
        (scene_of_files("Back", folder + "/back"), HOST, "back in the host: y up"),
    )
    widths = [high - low for low, high in (box(scene) for scene, _, _ in views)]
    size = 1.12 * max(max(width) for width in widths)
    for scene, side, title in views:
        set_up(scene, side, title, size)
    row = [render(scene, os.path.join(folder, "part.png")) for scene, _, _ in views]
    picture = bpy.data.images.new("Picture", 3 * WIDTH, HEIGHT)
    picture.pixels.foreach_set(np.concatenate(row, axis=1).ravel())
    picture.filepath_raw = os.path.join(folder, "blender.png")
    picture.file_format = "PNG"
    picture.save()


take(os.path.abspath(sys.argv[sys.argv.index("--") + 1]))
