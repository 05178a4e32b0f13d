# SPDX-License-Identifier: MIT
# Runs at installation: writes the files that name installed paths, since the prefix is known only
# now: the machine profile, and the files that start the helper programs.
set(LUMI_LIBEXEC_DIR ${CMAKE_INSTALL_PREFIX}/${LUMI_LIBEXECDIR}/lumivault)
set(LUMI_HINGE_PROGRAM ${LUMI_LIBEXEC_DIR}/chkhinge)
set(LUMI_RESOURCE_DIR ${CMAKE_INSTALL_PREFIX}/${LUMI_DATADIR}/lumivault)
# The system's configuration folder serves both system prefixes.
if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
  set(configuration /etc/xdg/lumivault)
else()
  set(configuration ${CMAKE_INSTALL_PREFIX}/etc/xdg/lumivault)
endif()
configure_file(${LUMI_PROFILE} ${LUMI_SCRATCH}/machine.ini @ONLY)
configure_file(${LUMI_CARDS}/lumivault-markers.service
  ${LUMI_SCRATCH}/lumivault-markers.service @ONLY)
configure_file(${LUMI_CARDS}/85-lumivault-cards.rules
  ${LUMI_SCRATCH}/85-lumivault-cards.rules @ONLY)
file(INSTALL ${LUMI_SCRATCH}/machine.ini DESTINATION ${configuration})
file(INSTALL ${LUMI_SCRATCH}/lumivault-markers.service
  DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/systemd/system)
file(INSTALL ${LUMI_SCRATCH}/85-lumivault-cards.rules
  DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/udev/rules.d)
