-- SPDX-License-Identifier: MIT
/* A small catalog of extremes: ends of the number ranges, every byte of the code page, NULL and emptiness in every
   column, names that a file or a spreadsheet would take amiss. The fourth region by name, 'В пределах', holds most. */

insert into PERIOD_TABLE values ('202403');
insert into PERIOD_TABLE values ('1');
insert into PERIOD_TABLE values ('');
insert into PERIOD_TABLE values (null);

insert into REGION values (9, null);
insert into REGION values (10, '');
insert into REGION values (null, 'А без кода');
insert into REGION values (1, 'В пределах');
insert into REGION values (5, 'Г двойник');
insert into REGION values (6, 'Г двойник');
-- Its low 32 bits are 2.
insert into REGION values (4294967298, 'Д код больше 32 бит');
insert into REGION values (-2147483648, 'Е код наименьший');
insert into REGION values (2147483647, 'Ж код наибольший');
insert into REGION values (11, 'З \/:*?"<>|[]''');
insert into REGION values (12, rpad('И', 255, ' имя во всю ширину'));
insert into REGION values (13, 'К байт без буквы');
commit;

set term ^ ;

/* Numbers that money and coefficients must keep digit by digit. */
execute block as
    declare nr integer = 0;
    declare money numeric(18,2);
begin
    for select MONEY from (
            select 1 as NR, cast('-92233720368547758.08' as numeric(18,2)) as MONEY from RDB$DATABASE union all
            select 2, cast('92233720368547758.07' as numeric(18,2)) from RDB$DATABASE union all
            select 3, -0.01 from RDB$DATABASE union all
            select 4, 0.00 from RDB$DATABASE union all
            select 5, 0.01 from RDB$DATABASE union all
            select 6, 0.05 from RDB$DATABASE union all
            select 7, -0.50 from RDB$DATABASE union all
            select 8, 1.10 from RDB$DATABASE union all
            select 9, 1234567.89 from RDB$DATABASE union all
            select 10, -1234567.90 from RDB$DATABASE union all
            -- no binary floating-point number has these digits
            select 11, cast('90071992547409.93' as numeric(18,2)) from RDB$DATABASE union all
            select 12, null from RDB$DATABASE)
        order by NR
        into money
    do
    begin
        nr = nr + 1;
        insert into TERKATALOGKTC_TABLE values (:nr, '202403', 1, :nr, 'money', 'Число ' || :nr, 'шт.', '0,5', 'I', '01',
            :money, :money, :money, :money);
        insert into TERMASH_TABLE values (:nr, '202403', 1, :nr, 'money', 'Число ' || :nr, 'маш.-ч', :money, :money);
        insert into TERTRUD_TABLE values (:nr, '202403', 1, :nr, 'money', 'Число ' || :nr, 'чел.-ч', :money);
        insert into FER20KATALOGPEREVOZKA_TABLE values (:nr, '202403', 1, :nr, 'money', 'Число ' || :nr, 'I', :money, :money);
    end
end^

/* Which table a query reads: two rows in each, whose IDs name it, the later one first by KOD. */
execute block as
    declare edition integer;
    declare prefix varchar(20);
    declare place integer;
    declare stem varchar(30);
    declare nr integer;
begin
    for select EDITION, PREFIX, PLACE, STEM from (
            select 1 as EDITION, cast('TER' as varchar(20)) as PREFIX from RDB$DATABASE union all
            select 4, 'FER14I2' from RDB$DATABASE union all
            select 7, 'FER17I5' from RDB$DATABASE union all
            select 8, 'FER20' from RDB$DATABASE)
        cross join (
            select 1 as PLACE, cast('KATALOGKTC_TABLE' as varchar(30)) as STEM from RDB$DATABASE union all
            select 2, 'KATOGLAVLENIE_TABLE' from RDB$DATABASE union all
            select 3, 'MASH_TABLE' from RDB$DATABASE union all
            select 4, 'TRUD_TABLE' from RDB$DATABASE)
        union all select 5, 'FER20', 0, 'KATALOGPEREVOZKA_TABLE' from RDB$DATABASE
        into edition, prefix, place, stem
    do
    begin
        nr = 1;
        while (nr <= 2) do
        begin
            execute statement ('insert into ' || prefix || stem || ' (ID, PER, REGIONID, KOD) values (?, ''209901'', 3, ?)')
                (10000 * edition + 1000 * place + nr, 3 - nr);
            nr = nr + 1;
        end
    end
end^

/* Control characters, in names of one KOD. */
execute block as
    declare code integer = 0;
begin
    while (code < 128) do
    begin
        insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NOMER, NAME)
        values (1000 + :code, '202403', 1, 1000, 'control ' || :code, 'до' || ascii_char(:code) || 'после');
        code = iif(code = 31, 127, code + 1);
    end
end^

set term ; ^

-- 0x98 is no letter of the code page: it has a region of its own, since a client in UTF-8 cannot read it. In one
-- literal, because joining texts would convert it.
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NOMER, NAME)
values (1999, '202403', 13, 1, 'byte 98', _WIN1251 x'E4EE98EFEEF1EBE5');
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NOMER, NAME)
values (2000, '202403', 1, 2000, 'upper half',
    _WIN1251 x'808182838485868788898A8B8C8D8E8F9091929394959697' || _WIN1251 x'999A9B9C9D9E9F'
    || _WIN1251 x'A0A1A2A3A4A5A6A7A8A9AAABACADAEAFB0B1B2B3B4B5B6B7B8B9BABBBCBDBEBF'
    || _WIN1251 x'C0C1C2C3C4C5C6C7C8C9CACBCCCDCECFD0D1D2D3D4D5D6D7D8D9DADBDCDDDEDF'
    || _WIN1251 x'E0E1E2E3E4E5E6E7E8E9EAEBECEDEEEFF0F1F2F3F4F5F6F7F8F9FAFBFCFDFEFF');

/* Texts that a workbook, a file or a grid may take amiss. */
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NOMER, NAME)
select 2000 + NR, '202403', 1, 2000 + NR, 'text ' || NR, TEXT
from (
    select 1 as NR, cast('=1+1' as varchar(1000)) as TEXT from RDB$DATABASE union all
    select 2, '=HYPERLINK("https://luno-beton.example")' from RDB$DATABASE union all
    select 3, '+7 (000) 000-00-00' from RDB$DATABASE union all
    select 4, '-5' from RDB$DATABASE union all
    select 5, '@SUM(1)' from RDB$DATABASE union all
    select 6, '''апостроф' from RDB$DATABASE union all
    select 7, '<b>&amp;"кавычки"</b>' from RDB$DATABASE union all
    select 8, '_x0041_' from RDB$DATABASE union all
    select 9, '  пробелы с обоих концов  ' from RDB$DATABASE union all
    select 10, ' ' from RDB$DATABASE union all
    select 11, '' from RDB$DATABASE union all
    select 12, 'первая' || ascii_char(13) || ascii_char(10) || 'вторая' || ascii_char(10) || 'третья' from RDB$DATABASE union all
    select 13, rpad('Тысяча знаков', 1000, ' и ещё слова') from RDB$DATABASE union all
    select 14, rpad('Слитно', 1000, 'Ъ') from RDB$DATABASE union all
    select 15, rpad('Столбиком', 1000, ascii_char(10) || 'я') from RDB$DATABASE union all
    select 16, '00012' from RDB$DATABASE union all
    select 17, '1E5' from RDB$DATABASE union all
    select 18, 'http://' || rpad('luno-beton.example/', 900, 'a') from RDB$DATABASE);

/* Ends of the whole numbers, columns filled to the brim, rows that are empty or NULL throughout. */
insert into TERKATALOGKTC_TABLE
values (-9223372036854775808, '202403', 1, -2147483648, rpad('', 50, '№'), rpad('', 1000, 'Щ'), rpad('', 30, 'м'), rpad('', 30, '9'),
    rpad('', 30, 'I'), rpad('', 30, '0'), 0, 0, 0, 0);
insert into TERKATALOGKTC_TABLE
values (9223372036854775807, '202403', 1, 2147483647, '', '', '', '', '', '', 0, 0, 0, 0);
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID) values (3000, '202403', 1);
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID) values (3001, '202403', 1);
insert into TERKATOGLAVLENIE_TABLE values (-9223372036854775808, '202403', 1, -2147483648, rpad('', 255, 'Щ'), rpad('', 30, '0'));
insert into TERKATOGLAVLENIE_TABLE values (9223372036854775807, '202403', 1, 2147483647, '', '');
insert into TERKATOGLAVLENIE_TABLE (ID, PER, REGIONID) values (3000, '202403', 1);
insert into TERMASH_TABLE (ID, PER, REGIONID) values (3000, '202403', 1);
insert into TERTRUD_TABLE (ID, PER, REGIONID) values (3000, '202403', 1);
insert into FER20KATALOGPEREVOZKA_TABLE (ID, PER, REGIONID) values (3000, '202403', 1);

/* Which rows a choice of region and period leads to. */
insert into TERKATALOGKTC_TABLE (ID, PER, REGIONID, KOD, NAME)
select 4000 + NR, PER, REGIONID, NR, NAME
from (
    select 1 as NR, '202403' as PER, cast(0 as bigint) as REGIONID, cast('регион без кода' as varchar(100)) as NAME from RDB$DATABASE union all
    select 2, '202403', 5, 'первый двойник' from RDB$DATABASE union all
    select 3, '202403', 6, 'второй двойник' from RDB$DATABASE union all
    select 4, '202403', 2, 'младшие 32 бита кода' from RDB$DATABASE union all
    select 5, '202403', 4294967298, 'весь код' from RDB$DATABASE union all
    select 6, '202403', -2147483648, 'наименьший код' from RDB$DATABASE union all
    select 7, '202403', 2147483647, 'наибольший код' from RDB$DATABASE union all
    select 8, '1', 1, 'короткий период' from RDB$DATABASE union all
    select 9, '', 1, 'пустой период' from RDB$DATABASE);

insert into FIRMS values (rpad('', 30, '1'), rpad('', 1000, 'Щ'), rpad('', 1000, 'Ж '), rpad('http://', 1000, 'a'));
insert into FIRMS values ('', '', '', '');
insert into FIRMS values (null, null, null, null);

insert into OGRANICHENIE
select NAME, KOEFF
from (
    select cast('наименьший' as varchar(255)) as NAME, cast('-922337203685477.5808' as numeric(18,4)) as KOEFF from RDB$DATABASE union all
    select 'наибольший', cast('922337203685477.5807' as numeric(18,4)) from RDB$DATABASE union all
    select 'меньше нуля', -0.0001 from RDB$DATABASE union all
    select 'нуль', 0.0000 from RDB$DATABASE union all
    select 'с нулями впереди', 0.0050 from RDB$DATABASE union all
    select 'с нулями позади', 1.5000 from RDB$DATABASE union all
    select rpad('', 255, 'Щ'), 1 from RDB$DATABASE union all
    select '', null from RDB$DATABASE union all
    select null, 1 from RDB$DATABASE);

/* A child before its parent, a missing parent, circles, a chain, the ends of the key. */
insert into KATALOG
select ID, PARENTID, NAME, TREE
from (
    select cast(2 as bigint) as ID, cast(1 as bigint) as PARENTID, cast('ребенок раньше родителя' as varchar(1000)) as NAME,
           cast('1.1' as varchar(30)) as TREE from RDB$DATABASE union all
    select 1, null, 'корень', '1' from RDB$DATABASE union all
    select 3, 999, 'родителя нет', '9.1' from RDB$DATABASE union all
    select 4, 3, 'ребенок того, чьего родителя нет', '9.1.1' from RDB$DATABASE union all
    select 5, 5, 'сам себе родитель', '5' from RDB$DATABASE union all
    select 6, 7, 'круг из двух, один', '6' from RDB$DATABASE union all
    select 7, 6, 'круг из двух, другой', '7' from RDB$DATABASE union all
    select 8, 7, 'висит на круге', '7.1' from RDB$DATABASE union all
    select 0, null, 'код нуль', '0' from RDB$DATABASE union all
    select 10, 0, 'ребенок кода нуль', '0.1' from RDB$DATABASE union all
    select -9223372036854775808, 9223372036854775807, rpad('', 1000, 'Щ'), rpad('', 30, '0') from RDB$DATABASE union all
    select 9223372036854775807, 1, null, null from RDB$DATABASE union all
    select 11, 1, '', '' from RDB$DATABASE);
insert into KATALOG
with recursive LINK as (
    select 1 as NR from RDB$DATABASE union all
    select NR + 1 from LINK where NR < 1000)
select 10000 + NR, iif(NR = 1, null, 9999 + NR), 'звено ' || NR, null from LINK;
commit;
