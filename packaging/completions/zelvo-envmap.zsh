#compdef zelvo-envmap
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    '--panorama[the picture shows all directions]' \
    '--turn=[degrees to turn the panorama to the right]:degrees' \
    '--ball[the picture is a photograph of a ball of chrome]' \
    '--exposure=[double the light so many times]:number' \
    '--contrast=[factor of the distance from middle grey]:factor' \
    '--blur=[soften by so many texels]:texels' \
    '--preview=[PNG of a sphere that reflects the texture]:picture:_files' \
    '--to-png[make a PNG of a texture]' \
    '1:picture:_files' \
    '2:output:_files'
