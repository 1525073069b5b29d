#pragma once

struct lua_State;

// Adds to the global table `vek`, which has to be there, what macros need to make, read, change and
// compare meshes. Where a function can fail, it returns nil and a sentence; a wrong argument is an
// error of the macro.
//
//     vek.make_surface([faces])    a closed vase with UVs, about 100,000 faces by default
//     vek.load_obj(path)           mesh, {faces_cut=, faces_skipped=, uvs_made=}
//     vek.read_mesh(path)          mesh from an exchange file
//     vek.read_maya(path)          mesh from a Maya scene as the host and the bridge write it
//     vek.compare(expected, back)  table: max_distance, mean_distance, vertices_missing,
//                                  vertices_added, faces_missing, faces_added, faces_wound_wrong,
//                                  faces_different, corners_lost, uvs_lost
//     vek.now()                    milliseconds of a clock that only runs forward
//
//     mesh:counts()                {vertices=, faces=, triangles=, quads=, corners=, uvs=}
//     mesh:bounds()                {min=, max=, centre=, size=}, each {x=, y=, z=}
//     mesh:signed_volume()         negative: a closed mesh is wound inwards
//     mesh:edges()                 {open=, disagreeing=, crowded=}
//     mesh:map(f)                  a new mesh with each position x, y, z = f(x, y, z)
//     mesh:twisted_about_y(angle)  a new mesh, twisted by an angle that grows with the height
//     mesh:rewound()               a new mesh, its faces reversed
//     mesh:with_own_uvs()          a new mesh with a UV, of five places, for each face corner
//     mesh:set_map(selector, name [, param])   the map file name that selector 0, 1 or 2 reports
//     mesh:maps()                  list of {selector=, name=, param=}
//     mesh:write(path)             true; an exchange file
//     mesh:write_maya(path)        true; a Maya scene
//     mesh:save_obj(path)          true
void registerMeshFunctions(lua_State* lua);
