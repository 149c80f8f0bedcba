#pragma once

/// A source that declares one name of each kind that a new axis can clash with: the structure "Box", the enumeration
/// "Colour", the global variable "lineSpeed", the axis group "gantry", the function block "Pusher", the function
/// "Mean", the program "Main" and the task "Fast". The global variable table bears the name of the source.
constexpr const char* sourceWithNamesOfEveryKind
    = "TYPE\n"
      "    Box : STRUCT\n"
      "        width : INT;\n"
      "    END_STRUCT;\n"
      "    Colour : (Red, Green);\n"
      "END_TYPE\n"
      "VAR_GLOBAL\n"
      "    lineSpeed : REAL;\n"
      "    gantry : AXES_GROUP_REF;\n"
      "END_VAR\n"
      "FUNCTION_BLOCK Pusher\nVAR\n    on : BOOL;\nEND_VAR\nEND_FUNCTION_BLOCK\n"
      "FUNCTION Mean : REAL\nVAR_INPUT\n    a : REAL;\nEND_VAR\nEND_FUNCTION\n"
      "PROGRAM Main\nVAR\n    on : BOOL;\nEND_VAR\nEND_PROGRAM\n"
      "TASK Fast(INTERVAL := T#1ms, PRIORITY := 1);\n";
