# Runs section_report in a fresh folder and compares what it prints with the files beside this one.
cmake_minimum_required(VERSION 3.22)
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

# The second run keeps the first one's file as the backup and finds what was changed.
file(COPY_FILE ${FOLDER}/s.tbf ${FOLDER}/first.tbf)
report(french 2 --french --date 20260814 --span 4.5 --load 2 --label "$NAME$: $NONE$ $F$"
       bad_lines.csv s.tbf)
expect_same(${FOLDER}/french.txt ${CMAKE_CURRENT_LIST_DIR}/french.txt)
expect_same(${FOLDER}/s.bak ${FOLDER}/first.tbf)

# What is not a table of sections leaves an existing file and its backup as they are, and is reported.
file(READ ${CMAKE_CURRENT_LIST_DIR}/bad_lines.csv table)
string(REGEX MATCH "designation,[^\n]+\n" heading "${table}")
string(REGEX MATCH "IPE 80,[^\n]+\n" section "${table}")
file(WRITE ${FOLDER}/heading.csv "${heading}")
file(WRITE ${FOLDER}/other.csv "name,h\nIPE 80,80\n")
file(WRITE ${FOLDER}/empty.csv "")
function(expect_refused table told)
    execute_process(COMMAND ${EMULATOR} ${PROGRAM} --date 20260814 ${table} s.tbf
                    WORKING_DIRECTORY ${FOLDER} OUTPUT_FILE ${FOLDER}/refused.txt
                    ERROR_FILE ${FOLDER}/refused_why.txt RESULT_VARIABLE result)
    file(READ ${FOLDER}/refused_why.txt why)
    if(NOT result EQUAL 1 OR NOT why MATCHES "${told}")
        message(SEND_ERROR "${table}: exit status ${result}: ${why}")
    endif()
    expect_same(${FOLDER}/s.tbf ${FOLDER}/last.tbf)
    expect_same(${FOLDER}/s.bak ${FOLDER}/first.tbf)
endfunction()
file(COPY_FILE ${FOLDER}/s.tbf ${FOLDER}/last.tbf)
expect_refused(nowhere.csv "nowhere.csv: cannot be read")
expect_refused(empty.csv "empty.csv: no section")
expect_refused(heading.csv "heading.csv: no section")
expect_refused(other.csv "Line 1: the heading must be designation,h")
expect_refused(. "cannot be read")

# A byte-order mark is passed over.
string(ASCII 239 187 191 mark)
file(WRITE ${FOLDER}/marked.csv "${mark}${heading}${section}")
report(marked 0 --french --date 20260801 marked.csv marked.tbf)
file(READ ${FOLDER}/marked.txt text)
if(NOT text MATCHES ", 1er août 2026\n")
    message(SEND_ERROR "the first of August is wrong in French:\n${text}")
endif()

# A report that cannot be printed is an error.
if(NOT EMULATOR AND EXISTS /dev/full)
    execute_process(COMMAND ${PROGRAM} bad_lines.csv full.tbf WORKING_DIRECTORY ${FOLDER}
                    OUTPUT_FILE /dev/full ERROR_VARIABLE why RESULT_VARIABLE result)
    if(NOT result EQUAL 1 OR NOT why MATCHES "Writing to standard output failed")
        message(SEND_ERROR "a full disk: exit status ${result}: ${why}")
    endif()
endif()

report(unwritable 1 --date 20260814 bad_lines.csv no_such_folder/s.tbf)
report(badSpan 3 --span 0 bad_lines.csv s.tbf)
report(badDate 3 --french --date 20260231 bad_lines.csv s.tbf)
