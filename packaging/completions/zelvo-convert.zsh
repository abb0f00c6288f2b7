#compdef zelvo-convert
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    {-o+,--output=}'[object file to write]:object:_files' \
    {-d+,--folder=}'[folder for the objects]:folder:_files -/' \
    '--up=[axis that points up]:axis:(Y Z)' \
    '--flip[turn all polygons inside out]' \
    '--triangles[cut all polygons into triangles]' \
    '--points=[reduce to at most this many points]:number' \
    '--polygons=[reduce to at most this many polygons]:number' \
    '--info[describe the files and write nothing]' \
    '--view[open the viewer on the object]' \
    '--cached[keep the object in the cache and print its path]' \
    '--timeout=[seconds that one input may take]:seconds' \
    '--memory=[MiB of memory that one input may take]:MiB' \
    '*:model:_files'
