-- SPDX-License-Identifier: MIT
/* Stretches of the 1,000,000 materials of region 4 in period 202403, so that catalogs of several sizes stand side by
   side: 300,000 in region 1 and 1,000 in region 2 of the same period, and in period 202412, which the browser shows
   first, 60,000 with all that belongs to them in each of the regions 1 to 4. */

insert into PERIOD_TABLE values ('202412');

set term ^ ;

execute block as
    declare region bigint;
    declare number_of_rows integer;
begin
    for select 1, 300000 from RDB$DATABASE union all select 2, 1000 from RDB$DATABASE
        into region, number_of_rows
    do
        insert into TERKATALOGKTC_TABLE
        select :region * 1000000000 + KOD, PER, :region, KOD, NOMER, NAME, EDIZM, BRUTTO, KLASSGR, KODUZLA, BAZOVAY,
               OPTOVAY, CMETNAY, INDEKS
        from TERKATALOGKTC_TABLE where PER = '202403' and REGIONID = 4 and KOD <= :number_of_rows order by KOD;
end^

execute block as
    declare region bigint = 0;
    declare origin bigint;
begin
    while (region < 4) do
    begin
        region = region + 1;
        origin = (10 + region) * 1000000000;
        insert into TERKATALOGKTC_TABLE
        select :origin + KOD, '202412', :region, KOD, NOMER, NAME, EDIZM, BRUTTO, KLASSGR, KODUZLA, BAZOVAY, OPTOVAY,
               CMETNAY, INDEKS
        from TERKATALOGKTC_TABLE where PER = '202403' and REGIONID = 4 and KOD <= 60000 order by KOD;
        insert into TERKATOGLAVLENIE_TABLE
        select :origin + KOD, '202412', :region, KOD, PUNKT, KODUZLA
        from TERKATOGLAVLENIE_TABLE where PER = '202403' and REGIONID = 4 and KOD <= 3000 order by KOD;
        insert into TERMASH_TABLE
        select :origin + KOD, '202412', :region, KOD, OBOSNOV, NAME, EDIZM, EMM, ZMP
        from TERMASH_TABLE where PER = '202403' and REGIONID = 4 and KOD <= 4000 order by KOD;
        insert into TERTRUD_TABLE
        select :origin + KOD, '202412', :region, KOD, OBOSNOV, NAME, EDIZM, OZP
        from TERTRUD_TABLE where PER = '202403' and REGIONID = 4 and KOD <= 600 order by KOD;
        insert into FER20KATALOGPEREVOZKA_TABLE
        select :origin + KOD, '202412', :region, KOD, OBOSNOV, NAME, KLASSGR, CMETNAY, TECCENA
        from FER20KATALOGPEREVOZKA_TABLE where PER = '202403' and REGIONID = 4 and KOD <= 6000 order by KOD;
    end
end^

set term ; ^
commit;
