# Runs PROGRAM with EMULATOR, if any: it ends with 0 and prints the line PRINTED and nothing else.
# What it prints goes through FILE, not a pipe: Wine's services, started with the first program, would
# keep that open.
execute_process(COMMAND ${EMULATOR} ${PROGRAM} OUTPUT_FILE ${FILE} COMMAND_ERROR_IS_FATAL ANY)
file(READ ${FILE} text)
string(REPLACE "\r" "" text "${text}")
if(NOT text STREQUAL "${PRINTED}\n")
    message(FATAL_ERROR "README.md says \"${PRINTED}\", the program prints \"${text}\"")
endif()
