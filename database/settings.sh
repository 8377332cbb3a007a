# SPDX-License-Identifier: MIT
# What the program expects of a server. Sourced by the scripts that make one or reach one.
# shellcheck shell=bash disable=SC2034
readonly port=3050
readonly alias='C:\DATA\BAZAKATALOG.FDB'
readonly password=pinewoods

# isql as the program's user, with texts in UTF-8.
isql() {
    isql-fb -quiet -bail -ch UTF8 -user SYSDBA -password "$password" "$@"
}

# The catalog on a server, as clients name it.
catalogOn() {
    echo "$1/$port:$alias"
}
