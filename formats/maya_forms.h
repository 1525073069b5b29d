#pragma once

// The statements of a Maya scene that are recognised: a line that begins with one of these, in any
// letter case, after blanks and tabs. A prefix is followed by a count and its postfix; what ends
// with '[' by a range "a:b]" or an index "a]" and a double quote.

// Left as they are.
constexpr char s_declareTranslate[] = "setAttr \".t\"";
constexpr char s_declareRotate[] = "setAttr \".r\"";
constexpr char s_declareScale[] = "setAttr \".s\"";

constexpr char s_declareUVCountLineStart[] =
    "setAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s";
constexpr char s_declareUVCountPrefix[] = "setAttr -s";
constexpr char s_declareUVCountPostfix[] = "\".uvst[0].uvsp\"";
constexpr char s_declareUVRange[] = "setAttr \".uvst[0].uvsp[";
constexpr char s_declareUVRangePostfix[] = "\".uvst[0].uvsp[";

constexpr char s_declareEdgeCountPrefix[] = "setAttr -s";
constexpr char s_declareEdgeCountPostfix[] = "\".ed\"";
constexpr char s_declareEdgeRange[] = "setAttr \".ed[";

constexpr char s_declarePointCountPrefix[] = "setAttr -s";
constexpr char s_declarePointCountPostfix[] = "\".vt\"";
constexpr char s_declarePointRange[] = "setAttr \".vt[";

constexpr char s_declareFaceCountPrefix[] = "setAttr -s";
constexpr char s_declareFaceCountPostfix[] = "\".fc\"";
constexpr char s_declareFaceRange[] = "setAttr \".fc[";
constexpr char s_declareFaceRangePostfix[] = "\".fc[";
constexpr char s_declareOptionalCHPrefix[] = "-ch";
constexpr char s_declareFaceRangeWithCH[] = "setAttr -ch";

constexpr char s_declareNode[] = "createNode";
constexpr char s_declareEndOfScene[] = "// End of ";
