#compdef zelvo-envmap
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    '--panorama[the picture shows all directions]' \
    '--turn=[degrees to turn the panorama to the right]:degrees' \
    '--ball[the picture is a photograph of a chrome ball]' \
    '--exposure=[double the light this many times]:number' \
    '--contrast=[multiply the distance from middle grey by this]:factor' \
    '--blur=[blur by this many texels]:texels' \
    '--preview=[PNG of a sphere that reflects the texture]:picture:_files' \
    '--to-png[make a PNG from a texture]' \
    '1:picture:_files' \
    '2:output:_files'
