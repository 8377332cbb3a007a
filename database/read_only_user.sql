-- SPDX-License-Identifier: MIT
/* Makes the program's login an ordinary user who may read the tables of the catalog and nothing else. To be run as
   SYSDBA in the catalog, once there is another administrator: afterwards no SYSDBA comes over the network any more. */

set term ^ ;

execute block as
    declare catalog_table varchar(31);
begin
    for select RDB$RELATION_NAME from RDB$RELATIONS where RDB$SYSTEM_FLAG = 0 and RDB$VIEW_BLR is null
        into catalog_table
    do
        execute statement 'grant select on ' || trim(catalog_table) || ' to user CATALOGREADER';
end^

set term ; ^
commit;

create or alter global mapping CATALOG_READER using plugin Srp from user SYSDBA to user CATALOGREADER;
commit;
