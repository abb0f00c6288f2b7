#compdef zelvo-render
# SPDX-License-Identifier: MIT
_arguments -S -s \
    '(- *)'{-h,--help}'[print a summary and exit]' \
    '(- *)--version[print the version and exit]' \
    '--envmap=[texture]:texture:_files' \
    '--size=[size of the screen]:size:(100x75 160x128 256x256 320x256 512x512 640x512)' \
    '--mode-id=[display mode of the screen]:number' \
    '--env=[folder of the settings of the session]:folder:_files -/' \
    '--envarc=[folder of the lasting settings]:folder:_files -/' \
    '--passes=[press Esc in this pass]:number' \
    '--input=[script of events and answers]:script:_files' \
    '--chunky=[folder for a PGM of each pass]:folder:_files -/' \
    '--png=[one PNG for each pass]:pattern:_files' \
    '--gif=[an endless animation]:file:_files' \
    '--sheet=[a PNG with all pictures]:file:_files' \
    '--y4m=[uncompressed video]:file:_files' \
    '--columns=[pictures in a row of the sheet]:number' \
    '--from=[first pass that becomes a picture]:pass' \
    '--every=[distance of the passes that become pictures]:number' \
    '--clock=[how time passes]:clock:(fixed real)' \
    '--tick=[what each reading of the fixed clock adds]:seconds' \
    '--mode=[render mode]:mode:(effect envmap texturemap lightsourced phong z-light dots)' \
    '--spin=-[speed of the spin]::speed, -4 to 4' \
    '--tilt=[tilt of the object, in counts of the mouse]:X,Y' \
    '--clear=[how a frame begins]:style:(clear fade blur rise)' \
    '--dots[dots over the faces]' \
    '--gamma=[gamma of each colour]:R,G,B' \
    '--turntable=[pictures of one full turn]:number' \
    '--no-texts[pictures without texts]' \
    '--background=[background of PNGs]:background:(black transparent)' \
    '*:object:_files -g "(#i)*.lwo(|b)"'
