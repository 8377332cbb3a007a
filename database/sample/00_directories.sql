-- SPDX-License-Identifier: MIT
/* Regions, periods and coefficients, and how much of each catalog a region has. What the later scripts need only
   while loading lies in temporary tables whose names begin with W_. Lists of texts are cast to VARCHAR, since a union
   of plain literals would pad them with blanks. */

create global temporary table W_EDITION (
    PREFIX varchar(10),
    FACTOR double precision -- of its prices against the base prices
) on commit preserve rows;

create global temporary table W_COVERAGE (
    PER varchar(6),
    REGIONID bigint,
    STEP integer,           -- the catalog holds every STEP-th row of the full one
    FACTOR double precision -- of current prices against base prices
) on commit preserve rows;
commit;

insert into W_EDITION values ('TER', 1.00);
insert into W_EDITION values ('FER14I2', 0.94);
insert into W_EDITION values ('FER17I5', 1.07);
insert into W_EDITION values ('FER20', 1.15);

insert into REGION values (22, 'Алтайский край');
insert into REGION values (35, 'Вологодская обл.');
insert into REGION values (59, 'Пермский край');
insert into REGION values (11, 'Респ. Коми');
insert into REGION values (16, 'Респ. Татарстан');
insert into REGION values (61, 'Ростовская обл.');
insert into REGION values (63, 'Самарская обл.');
insert into REGION values (66, 'Свердловская обл.');
insert into REGION values (70, 'Томская обл.');
insert into REGION values (71, 'Тульская обл.');
insert into REGION values (27, 'Хабаровский край');
insert into REGION values (87, 'Чукотский АО');
insert into REGION values (76, 'Ярославская обл.');

insert into PERIOD_TABLE values ('202212');
insert into PERIOD_TABLE values ('202303');
insert into PERIOD_TABLE values ('202306');
insert into PERIOD_TABLE values ('202309');
insert into PERIOD_TABLE values ('202312');
insert into PERIOD_TABLE values ('202403');

/* One region has its catalogs in full, one has none at all. */
insert into W_COVERAGE
select P.PERIOD, R.ID,
       case when R.ID <> 11 then 20 when P.PERIOD = '202403' then 1 else 4 end,
       (6.5 + 0.0115 * (cast(P.PERIOD as integer) - 202212)) * (0.9 + mod(R.ID * 37, 50) / 100.0)
from PERIOD_TABLE P cross join REGION R
where R.ID <> 87;

insert into OGRANICHENIE
select R.NAME || ', ' || Z.NAME, 0.9 + mod(R.ID * 7919 + Z.NR * 1733, 4999) / 10000.0000
from REGION R
cross join (
    select 1 as NR, cast('I зона' as varchar(100)) as NAME from RDB$DATABASE union all
    select 2, 'II зона' from RDB$DATABASE union all
    select 3, 'районы Крайнего Севера и местности, приравненные к ним' from RDB$DATABASE) Z
order by R.NAME, Z.NR;
insert into OGRANICHENIE values ('Вахтовый метод, зона не установлена', null);
insert into OGRANICHENIE values (null, 1.0000);
commit;
