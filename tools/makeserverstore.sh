#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# makeserverstore.sh DATABASE [PERSON[@HOST]...]: makes a database for Gaugewell on a MariaDB server, and for each person an
# account that may read and change its rows and nothing else. The password of a new account is printed; an account that
# exists keeps its own. HOST is the computer that the person works on, as the server sees it; default: any. A database that
# is there already stays as it is. The variable MARIADB may hold the client with its options (default: mariadb), and
# GAUGEWELL_SQL the file of statements (default: server.sql beside this script).
set -euo pipefail

fail() { echo "makeserverstore.sh: $1" >&2; exit 1; }
read -ra client <<<"${MARIADB:-mariadb}"
sql=${GAUGEWELL_SQL:-$(dirname "$0")/server.sql}
[ $# -ge 1 ] || fail "which database? (makeserverstore.sh DATABASE [PERSON[@HOST]...])"
database=$1
shift
[[ $database =~ ^[A-Za-z0-9_]+$ ]] || fail "the database's name may have letters, digits and _ only: '$database'"
for person in "$@"; do
  [[ $person =~ ^[A-Za-z0-9._-]+(@[A-Za-z0-9.:%_-]+)?$ ]] || fail "'$person' is no name of a person"
done
[ -r "$sql" ] || fail "'$sql' cannot be read"

ask() { "${client[@]}" --batch --skip-column-names <<<"$1"; } # not in the list of processes

if [ -z "$(ask "SHOW DATABASES LIKE '${database//_/\\_}'")" ]; then
  ask "CREATE DATABASE \`$database\` CHARACTER SET utf8mb4"
  if ! "${client[@]}" "$database" <"$sql"; then
    ask "DROP DATABASE \`$database\`"
    fail "the database could not be made"
  fi
  echo "The database '$database' is ready."
else
  [ "$(ask "SELECT COUNT(*) FROM information_schema.views WHERE table_schema='$database' AND table_name='database_version'")" = 1 ] ||
    fail "the server has a database '$database' that is not Gaugewell's"
  echo "The database '$database' is there already."
fi

for person in "$@"; do
  name=${person%%@*}
  host=%
  [ "$name" = "$person" ] || host=${person#*@}
  account="'$name'@'$host'"
  protected="REQUIRE SSL"
  [ "$host" != localhost ] || protected="" # through a socket of the server's own computer
  known=$(ask "SELECT COUNT(*) FROM mysql.user WHERE user='$name' AND host='$host'")
  if [ "$known" = 0 ]; then
    password=$(head -c 15 /dev/urandom | base64 | tr '+/' '-_')
    ask "CREATE USER $account IDENTIFIED BY '$password' $protected"
    echo "$person: the password is $password"
  else
    echo "$person: has an account already and keeps its password."
  fi
  ask "GRANT SELECT, INSERT, UPDATE, DELETE, CREATE TEMPORARY TABLES ON \`${database//_/\\_}\`.* TO $account"
done
