#!/bin/bash
# Answers every request under its number with what doesn't belong to it.
exec 3<>"/dev/tcp/127.0.0.1/$1"
while read -r request <&3; do
  id=${request#*:}
  case $request in
    *'"do":"solve"'*) ok='{"entities":[{"id":99,"at":[0,0]}],"values":[]}' ;;
    *) ok='{"refused":3}' ;;
  esac
  echo '{"id":'"${id%%,*}"',"ok":'"$ok"'}' >&3
done
