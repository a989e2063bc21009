# Runs section_report in a fresh folder and compares what it prints with the files beside this one.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(COPY ${CMAKE_CURRENT_LIST_DIR}/bad_lines.csv DESTINATION ${FOLDER})

function(report name status)
    execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGN} WORKING_DIRECTORY ${FOLDER}
                    OUTPUT_FILE ${FOLDER}/${name}.txt RESULT_VARIABLE result)
    if(NOT result EQUAL status)
        message(SEND_ERROR "${name}: exit status ${result} instead of ${status}")
    endif()
endfunction()

function(expect_same a b)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${a} ${b} RESULT_VARIABLE differ)
    if(differ)
        file(READ ${a} text)
        message(SEND_ERROR "${a} differs from ${b}; it holds:\n${text}")
    endif()
endfunction()

# Bad lines are reported with their numbers; the rest is printed, stored and read back.
report(english 2 --date 20260814 --describe F Sag --format F 7.1 --describe NONE x --format H 6.2
       bad_lines.csv s.tbf)
expect_same(${FOLDER}/english.txt ${CMAKE_CURRENT_LIST_DIR}/english.txt)
if(EXISTS ${FOLDER}/s.bak)
    message(SEND_ERROR "a backup of nothing")
endif()

# The second run keeps the first one's file as the backup, writes the same bytes again and finds what
# was changed.
file(COPY_FILE ${FOLDER}/s.tbf ${FOLDER}/first.tbf)
report(french 2 --french --date 20260814 --span 4.5 --load 2 --label "$NAME$: $NONE$ $F$"
       bad_lines.csv s.tbf)
expect_same(${FOLDER}/french.txt ${CMAKE_CURRENT_LIST_DIR}/french.txt)
expect_same(${FOLDER}/s.bak ${FOLDER}/first.tbf)

report(missing 2 --date 20260814 nowhere.csv empty.tbf)
file(STRINGS ${FOLDER}/missing.txt told REGEX "nowhere.csv: cannot be read")
if(NOT told)
    message(SEND_ERROR "a missing table was not reported")
endif()
report(unwritable 1 --date 20260814 bad_lines.csv no_such_folder/s.tbf)
report(badSpan 3 --span 0 bad_lines.csv s.tbf)
report(badDate 3 --date 20260231 bad_lines.csv s.tbf)
