-- SPDX-License-Identifier: MIT
/* Three hundred invented firms. No tax office has the code 0000 with which their numbers begin, and no site can
   exist under the top-level domain "example". */
set term ^ ;
execute block as
    declare firsts varchar(300);
    declare lasts varchar(400);
    declare first varchar(40);
    declare last varchar(40);
    declare nr integer = 0;
begin
    firsts = 'Луно=luno,Звездо=zvezdo,Росо=roso,Мглисто=mglisto,Ветродуй=vetroduy,Гром=grom,Сказко=skazko,Облако=oblako,'
        || 'Радуго=radugo,Снего=snego,Волно=volno,Эхо=echo,Пламя=plamya,Иней=iney,Туман=tuman,';
    while (firsts <> '') do
    begin
        first = substring(firsts from 1 for position(',', firsts) - 1);
        firsts = substring(firsts from position(',', firsts) + 1);
        lasts = 'бетон=beton,щебень=scheben,кирпич=kirpich,профиль=profil,кровля=krovlya,изоляция=izolyaciya,краски=kraski,'
            || 'трубы=truby,кабель=kabel,плитка=plitka,монтаж=montazh,карьер=karier,лесопил=lesopil,металл=metall,'
            || 'снаб=snab,транс=trans,арматура=armatura,стекло=steklo,техника=tehnika,проект=proekt,';
        while (lasts <> '') do
        begin
            last = substring(lasts from 1 for position(',', lasts) - 1);
            lasts = substring(lasts from position(',', lasts) + 1);
            nr = nr + 1;
            insert into FIRMS values (
                iif(:nr = 150, null, '0000' || lpad(mod(:nr * 7919, 1000000), 6, '0')),
                iif(mod(:nr, 140) = 9, null,
                    decode(mod(:nr, 5), 0, 'ООО', 1, 'АО', 2, 'ООО', 3, 'ЗАО', 'ОАО') || ' "'
                    || substring(:first from 1 for position('=', :first) - 1) || '-'
                    || substring(:last from 1 for position('=', :last) - 1) || '"'),
                iif(mod(:nr, 45) = 20, null,
                    '000' || lpad(mod(:nr * 37, 1000), 3, '0') || ', г. '
                    || decode(mod(:nr, 4), 0, 'Примерск', 1, 'Верхний Образец', 2, 'Новосметинск', 'Каталожный') || ', ул. '
                    || decode(mod(:nr, 7), 0, 'Расчетная', 1, 'Сметная', 2, 'Ведомостная', 3, 'Нормативная', 4, 'Складская',
                              5, 'Тарифная', 'Заводская')
                    || ', д. ' || (mod(:nr * 13, 97) + 1)
                    || iif(mod(:nr, 3) = 0, ', стр. ' || (mod(:nr, 5) + 1) || ', помещение ' || :nr, '')),
                iif(mod(:nr, 17) = 6, null,
                    'https://' || substring(:first from position('=', :first) + 1) || '-'
                    || substring(:last from position('=', :last) + 1) || '.example'));
        end
    end
end^
set term ; ^
commit;
