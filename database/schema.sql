-- SPDX-License-Identifier: MIT
/* Tables of the price catalog. Rows of the catalogs and of the tree have a key; the directories are only unique,
   because those in the field hold NULL in any of their columns. */

create table REGION (
    ID bigint,
    NAME varchar(255)
);
create unique index REGION_ID on REGION (ID);

create table PERIOD_TABLE (
    PERIOD varchar(6)
);
create unique index PERIOD_TABLE_PERIOD on PERIOD_TABLE (PERIOD);

create table FIRMS (
    INN varchar(30),
    FULLNAME varchar(1000),
    URADDRESS varchar(1000),
    WEBSITE varchar(1000)
);
create unique index FIRMS_INN on FIRMS (INN);

create table OGRANICHENIE (
    NAME varchar(255),
    KOEFF numeric(18,4)
);
create unique index OGRANICHENIE_NAME on OGRANICHENIE (NAME);

create table KATALOG (
    ID bigint not null primary key,
    PARENTID bigint,
    NAME varchar(1000),
    TREE varchar(30)
);

/* A query by period and region in order of KOD walks one index range and needs no sort: that is what the
   three-column index of every table below is for. */

create table FER20KATALOGPEREVOZKA_TABLE (
    ID bigint not null primary key,
    PER varchar(6) not null,
    REGIONID bigint not null,
    KOD integer,
    OBOSNOV varchar(50),
    NAME varchar(1000),
    KLASSGR varchar(30),
    CMETNAY numeric(18,2),
    TECCENA numeric(18,2)
);
create index FER20KATALOGPEREVOZKA_ROWS on FER20KATALOGPEREVOZKA_TABLE (PER, REGIONID, KOD);

commit;
set term ^ ;

/* TER, FER14I2, FER17I5 and FER20: four editions of the same four tables. */
execute block as
    declare editions varchar(50) = 'TER,FER14I2,FER17I5,FER20,';
    declare edition varchar(10);
    declare stem varchar(20);
    declare details varchar(500);
begin
    while (editions <> '') do
    begin
        edition = substring(editions from 1 for position(',', editions) - 1);
        editions = substring(editions from position(',', editions) + 1);
        for select STEM, DETAILS from (
                select cast('KATALOGKTC' as varchar(20)) as STEM,
                       'NOMER varchar(50), NAME varchar(1000), EDIZM varchar(30), BRUTTO varchar(30), '
                       || 'KLASSGR varchar(30), KODUZLA varchar(30), BAZOVAY numeric(18,2), OPTOVAY numeric(18,2), '
                       || 'CMETNAY numeric(18,2), INDEKS numeric(18,2)' as DETAILS
                from RDB$DATABASE
                union all
                select 'KATOGLAVLENIE', 'PUNKT varchar(255), KODUZLA varchar(30)' from RDB$DATABASE
                union all
                select 'MASH',
                       'OBOSNOV varchar(50), NAME varchar(1000), EDIZM varchar(30), EMM numeric(18,2), ZMP numeric(18,2)'
                from RDB$DATABASE
                union all
                select 'TRUD',
                       'OBOSNOV varchar(50), NAME varchar(1000), EDIZM varchar(30), OZP numeric(18,2)'
                from RDB$DATABASE)
            into stem, details
        do
        begin
            execute statement 'create table ' || edition || stem || '_TABLE (ID bigint not null primary key, '
                || 'PER varchar(6) not null, REGIONID bigint not null, KOD integer, ' || details || ')';
            execute statement 'create index ' || edition || stem || '_ROWS on '
                || edition || stem || '_TABLE (PER, REGIONID, KOD)';
        end
    end
end^

set term ; ^
commit;
