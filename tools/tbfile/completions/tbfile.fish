# Completion of tbfile's commands and options, for fish.
set -l commands info ls dump extract pack verify recover diff repack
complete -c tbfile -n "not __fish_seen_subcommand_from $commands" -a "$commands"
complete -c tbfile -l lang -x -a 'fr en'
complete -c tbfile -s h -l help
complete -c tbfile -n '__fish_seen_subcommand_from ls' -s s -l sort -x -a 'file id length description'
complete -c tbfile -n '__fish_seen_subcommand_from ls' -s r -l reverse
complete -c tbfile -n '__fish_seen_subcommand_from dump' -l raw -r
complete -c tbfile -n '__fish_seen_subcommand_from verify' -s q -l quick
complete -c tbfile -n '__fish_seen_subcommand_from recover' -l certain
complete -c tbfile -n '__fish_seen_subcommand_from repack' -l checksums
complete -c tbfile -n '__fish_seen_subcommand_from diff' -l ignore-dates
complete -c tbfile -n '__fish_seen_subcommand_from dump extract pack recover repack' -s f -l force
complete -c tbfile -n '__fish_seen_subcommand_from info ls extract pack verify recover diff repack' -l json
