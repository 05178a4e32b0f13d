# SPDX-License-Identifier: MIT
# Every pixmap of the program: its name, the drawing it comes from, the states put on it.

# Grounds of the left column and of the right side of the forms.
lumi_pixmap(bg_left bg_left)
lumi_pixmap(bg_right bg_right)
lumi_pixmap(bg_right_copy bg_right_copy)
lumi_pixmap(bg_right_top bg_right_top)

# Left column: three views, the slideshow, the way back to the top menu.
foreach(view IN ITEMS look_a look_b look_c)
  lumi_pixmap(${view} ${view})
  lumi_pixmap(${view}_push ${view} push)
  lumi_pixmap(${view}_on ${view} on)
  lumi_pixmap(${view}_push_on ${view} push push_on)
endforeach()

# Plain buttons.
foreach(button IN ITEMS look_d goto_top top_copy top_look copy_cf copy_sd)
  lumi_pixmap(${button} ${button})
  lumi_pixmap(${button}_push ${button} push)
endforeach()
lumi_pixmap(copy_cf_gray copy_cf gray)
lumi_pixmap(copy_sd_gray copy_sd gray)

# Cells of the thumbnail view, in the set with a name below and in the set without.
foreach(set IN ITEMS l s)
  lumi_pixmap(frame_pic_${set} frame_pic_${set})
  lumi_pixmap(frame_pic_${set}_on frame_pic_${set} focus)
  lumi_pixmap(frame_folder_${set} frame_folder_${set})
  lumi_pixmap(frame_folder_${set}_on frame_folder_${set} focus)
  lumi_pixmap(frame_folder_p${set} frame_folder_${set} pictures)
  lumi_pixmap(frame_folder_p${set}_on frame_folder_${set} pictures focus)
  lumi_pixmap(frame_folder_${set}_back frame_folder_${set} up)
  lumi_pixmap(frame_folder_${set}_back_on frame_folder_${set} up focus)
  lumi_pixmap(check_${set} check_${set})
  lumi_pixmap(check_${set}_on check_${set} checked)
endforeach()

# Tool buttons, menu entries, the program's own sign.
foreach(icon IN ITEMS to_top spread scaledown fit i_left i_right cut copy paste lumivault)
  lumi_pixmap(${icon} ${icon})
endforeach()
