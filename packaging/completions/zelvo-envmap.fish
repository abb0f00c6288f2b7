# SPDX-License-Identifier: MIT
# Completion of zelvo-envmap in fish.
complete -c zelvo-envmap -s h -l help -d 'Print a summary and exit'
complete -c zelvo-envmap -l version -d 'Print the version and exit'
complete -c zelvo-envmap -l panorama -d 'The picture shows all directions'
complete -c zelvo-envmap -l turn -x -d 'Degrees to turn the panorama to the right'
complete -c zelvo-envmap -l ball -d 'The picture is a photograph of a chrome ball'
complete -c zelvo-envmap -l exposure -x -d 'Double the light this many times'
complete -c zelvo-envmap -l contrast -x -d 'Multiply the distance from middle grey by this'
complete -c zelvo-envmap -l blur -x -d 'Blur by this many texels'
complete -c zelvo-envmap -l preview -r -F -d 'PNG of a sphere that reflects the texture'
complete -c zelvo-envmap -l to-png -d 'Make a PNG from a texture'
