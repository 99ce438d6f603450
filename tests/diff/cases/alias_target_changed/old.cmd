alias x paint
