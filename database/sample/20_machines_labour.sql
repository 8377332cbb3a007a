-- SPDX-License-Identifier: MIT
/* Machines: sixteen types in four makes and five powers. Labour: three kinds of workers by average grade. */

create global temporary table W_MACHINE (
    NR integer,
    NAME varchar(100),
    PRICE double precision -- of one machine hour
) on commit preserve rows;
commit;

insert into W_MACHINE values (1, 'Экскаваторы одноковшовые', 84.6);
insert into W_MACHINE values (2, 'Бульдозеры', 79.1);
insert into W_MACHINE values (3, 'Краны стреловые', 111.9);
insert into W_MACHINE values (4, 'Погрузчики фронтальные', 89.9);
insert into W_MACHINE values (5, 'Катки дорожные вибрационные', 101.4);
insert into W_MACHINE values (6, 'Автогрейдеры', 123.1);
insert into W_MACHINE values (7, 'Асфальтоукладчики', 165.7);
insert into W_MACHINE values (8, 'Компрессоры передвижные', 90);
insert into W_MACHINE values (9, 'Агрегаты сварочные', 14.2);
insert into W_MACHINE values (10, 'Бетононасосы', 188.4);
insert into W_MACHINE values (11, 'Копры и сваебойные установки', 231.6);
insert into W_MACHINE values (12, 'Буровые установки', 276.3);
insert into W_MACHINE values (13, 'Подъемники мачтовые', 31.3);
insert into W_MACHINE values (14, 'Насосы для водоотлива', 9.8);
insert into W_MACHINE values (15, 'Электростанции передвижные', 38.5);
insert into W_MACHINE values (16, 'Автомобили бортовые', 75.4);

create global temporary table W_RESOURCE (
    TARGET varchar(4),      -- MASH or TRUD
    NR integer,
    OBOSNOV varchar(50),
    NAME varchar(1000),
    EDIZM varchar(30),
    PRICE double precision
) on commit preserve rows;
commit;

insert into W_RESOURCE
select 'MASH', row_number() over (order by M.NR, K.NR, P.NR),
       '91.' || lpad(M.NR, 2, '0') || '.' || lpad(K.NR, 2, '0') || '-' || lpad(P.NR, 3, '0'),
       M.NAME || ' ' || K.NAME || ', мощность ' || (P.NR * 22 + 15) || ' кВт',
       'маш.-ч', M.PRICE * (0.8 + K.NR * 0.07 + P.NR * 0.16)
from W_MACHINE M
cross join (
    select 1 as NR, cast('на гусеничном ходу' as varchar(100)) as NAME from RDB$DATABASE union all
    select 2, 'на пневмоколесном ходу' from RDB$DATABASE union all
    select 3, 'прицепные' from RDB$DATABASE union all
    select 4, 'на автомобильном ходу' from RDB$DATABASE) K
cross join (
    select 1 as NR from RDB$DATABASE union all
    select 2 from RDB$DATABASE union all
    select 3 from RDB$DATABASE union all
    select 4 from RDB$DATABASE union all
    select 5 from RDB$DATABASE) P;

insert into W_RESOURCE
with recursive GRADE as (
    select 10 as TENTHS from RDB$DATABASE
    union all
    select TENTHS + 1 from GRADE where TENTHS < 80)
select 'TRUD', row_number() over (order by W.NR, G.TENTHS),
       W.NR || '-100-' || G.TENTHS,
       W.NAME || ', средний разряд работы ' || (G.TENTHS / 10) || ',' || mod(G.TENTHS, 10),
       'чел.-ч', (5.8 + G.TENTHS * 0.09) * (1 + W.NR * 0.12)
from GRADE G
cross join (
    select 1 as NR, cast('Затраты труда рабочих-строителей' as varchar(100)) as NAME from RDB$DATABASE union all
    select 2, 'Затраты труда монтажников оборудования' from RDB$DATABASE union all
    select 3, 'Затраты труда пусконаладочного персонала' from RDB$DATABASE) W;

set term ^ ;
execute block as
    declare prefix varchar(10);
    declare factor double precision;
    declare target varchar(4);
    declare prices varchar(300);
begin
    for select E.PREFIX, E.FACTOR, T.NAME, T.PRICES
        from W_EDITION E
        cross join (
            select 'MASH' as NAME,
                   'iif(mod(R.NR, 61) = 15, null, R.PRICE * C.FACTOR * :E),
                    iif(mod(R.NR, 67) = 17, null, R.PRICE * C.FACTOR * :E * 0.19)' as PRICES from RDB$DATABASE union all
            select 'TRUD', 'iif(mod(R.NR, 61) = 15, null, R.PRICE * C.FACTOR * :E)' from RDB$DATABASE) T
        into prefix, factor, target, prices
    do
        execute statement (
            'insert into ' || prefix || target || '_TABLE
             select row_number() over (order by C.PER, C.REGIONID, R.NR), C.PER, C.REGIONID,
                    iif(mod(R.NR, 197) = 0, null, R.NR - iif(mod(R.NR, 30) = 0, 1, 0)),
                    iif(mod(R.NR, 101) = 3, null, R.OBOSNOV),
                    iif(mod(R.NR, 199) = 5, null, R.NAME),
                    iif(mod(R.NR, 103) = 7, null, R.EDIZM), ' || prices || '
             from W_COVERAGE C join W_RESOURCE R on R.TARGET = ''' || target || ''' and mod(R.NR, C.STEP) = 0')
            (E := factor);
end^
set term ; ^
commit;
